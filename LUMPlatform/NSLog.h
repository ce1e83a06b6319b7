#pragma once

#include "LUMPlatform/NSString.h"

#include <functional>

/// Takes the text of each line that NSLog writes, without time and program.
using NSLogSink = std::function<void(const NSRef<NSString>& text)>;

/// Sends the lines of NSLog to `sink` instead of standard error, for hosts with a log of their own and for
/// tests; an empty one sends them to standard error again. Returns the sink before. A sink is called on the
/// thread that logs, by many at once when they log at once, and once more at most after it was replaced.
/// Threads: any.
NS_EXPORT NSLogSink NSSetLogSink(NSLogSink sink);

/// Writes one line to the log: the text that a format and its arguments make (see
/// NSString::stringWithFormat).
///
///     NSLog("Couldn't close file descriptor (%d)", errno);
///
/// On standard error it goes out in one piece, with the local time, the process and the thread, as
/// "2026-03-09 14:05:07.120 incoming[4711:4715] Couldn't close file descriptor (9)".
///
/// Threads: any. Leaves errno as it was.
template<typename... Arguments> void NSLog(const NSRef<NSString>& format, const Arguments&... arguments);

namespace NSLogDetail {
NS_EXPORT void write(const NSRef<NSString>& text);
}

template<typename... Arguments> void NSLog(const NSRef<NSString>& format, const Arguments&... arguments)
{
    NSLogDetail::write(NSString::stringWithFormat(format, arguments...));
}
