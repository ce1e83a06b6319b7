// Carries the headers that cmake/LUMTesting.cmake has read ahead of the tests; there is nothing to add to
// them.
