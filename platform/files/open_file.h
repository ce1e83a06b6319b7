#pragma once

#include <type_traits>
#include <utility>

namespace platform {

/// Closes an open file at the end of a scope, or before, to see what that says. `System` has the `close`,
/// which may say nothing.
template<typename System> class OpenFile {
public:
    OpenFile(System& system, int file) : mSystem(system), mFile(file) { } ///< A negative one is none.
    ~OpenFile() { (void)close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int get() const { return mFile; }
    int close()
    {
        if (mFile < 0)
            return 0;
        const int file = std::exchange(mFile, -1);
        if constexpr (std::is_void_v<decltype(mSystem.close(file))>)
            return mSystem.close(file), 0;
        else
            return mSystem.close(file);
    }

private:
    System& mSystem;
    int mFile;
};

}
