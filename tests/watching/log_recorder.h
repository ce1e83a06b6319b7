#pragma once

#include "LUMPlatform/NSLog.h"

#include <mutex>
#include <string>

namespace lum {

/// Takes the lines of the log while it lives.
class LogRecorder {
public:
    LogRecorder()
        : mBefore(NSSetLogSink([this](const NSRef<NSString>& text) {
            const std::lock_guard lock(mLock);
            mLines += text->utf8() + "\n";
        }))
    {
    }
    ~LogRecorder() { NSSetLogSink(mBefore); }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    std::string take()
    {
        const std::lock_guard lock(mLock);
        return std::exchange(mLines, {});
    }

private:
    std::mutex mLock;
    std::string mLines;
    NSLogSink mBefore;
};

}
