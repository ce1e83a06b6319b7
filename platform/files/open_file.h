#pragma once

#include <utility>

namespace platform {

/// Closes an open file at the end of a scope, or before, to see what that says. `System` has the `close`.
template<typename System> class OpenFile {
public:
    OpenFile(System& system, int file) : mSystem(system), mFile(file) { } ///< A negative one is none.
    ~OpenFile() { (void)close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int get() const { return mFile; }
    int close() { return mFile < 0 ? 0 : mSystem.close(std::exchange(mFile, -1)); }

private:
    System& mSystem;
    int mFile;
};

}
