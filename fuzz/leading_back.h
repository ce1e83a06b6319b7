#pragma once

// A graph of counted objects that leads back into itself is never freed, and an archive may hold one. So the
// fuzzers of archives look for everything but leaks.
extern "C" const char*
__asan_default_options() // NOLINT(bugprone-reserved-identifier): its name in the sanitizer
{
    return "detect_leaks=0";
}
