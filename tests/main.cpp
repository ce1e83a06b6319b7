#include <gtest/gtest.h>

// Sanitizers end a program that asks for more memory than there can be; tests see what is made of the
// refusal.
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    return "allocator_may_return_null=1";
}
extern "C" const char* __tsan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    return "allocator_may_return_null=1";
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
