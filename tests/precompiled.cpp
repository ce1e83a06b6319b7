// Carries the headers that cmake/LUMTesting.cmake has read ahead of the tests.
