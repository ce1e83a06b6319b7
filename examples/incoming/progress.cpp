#include "examples/incoming/progress.h"

#include "LUMFoundation/LUMAbsoluteTimeGetCurrent.h"
#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMFoundation/LUMDurationFormatter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double kRateWindow = 2.0; // seconds
constexpr std::size_t kRows = 12;

std::string bytes(double count)
{
    return LUMByteCountFormatter::stringWithByteCount(static_cast<std::uint64_t>(std::max(count, 0.0)))
        ->utf8();
}

std::string duration(double seconds)
{
    auto formatter = NSMake<LUMDurationFormatter>();
    formatter->setIncludeMilliseconds(true);
    return formatter->stringForObjectValue(NSRef<NSNumber>(seconds))->utf8();
}

/// Cut to a width by characters; file names are mostly plain.
std::string cut(const std::string& name, std::size_t width)
{
    return name.size() <= width ? name : name.substr(0, width - 3) + "...";
}

}

Progress::Progress(bool onTerminal)
    : mOnTerminal(onTerminal)
    , mBegan(LUMAbsoluteTimeGetCurrent())
    , mRate(LUMRateReporter::initWithTimeWindow(kRateWindow))
{
    mRate->addSample(0);
}

double Progress::elapsed() const
{
    return LUMAbsoluteTimeGetCurrent() - mBegan;
}

void Progress::fileEnded(const Receipt& receipt)
{
    mReceipts.push_back(receipt);
    if (receipt.failure.empty()) {
        mBytes += receipt.size;
        mStored += receipt.stored;
    } else
        ++mFailed;
    mRate->addSample(static_cast<double>(mBytes));
    if (mOnTerminal && receipt.failure.empty())
        return;
    std::printf("%s%-40s %10s -> %10s  %08x  %s\n", mOnTerminal ? "\r\033[K" : "",
        cut(receipt.name, 40).c_str(), bytes(static_cast<double>(receipt.size)).c_str(),
        bytes(static_cast<double>(receipt.stored)).c_str(), receipt.crc32,
        receipt.failure.empty() ? receipt.md5.c_str() : receipt.failure.c_str());
    std::fflush(stdout);
}

void Progress::refresh(std::size_t inWork, std::size_t waiting)
{
    if (!mOnTerminal)
        return;
    mRate->addSample(static_cast<double>(mBytes));
    std::printf("\r\033[K%zu files, %zu in work, %zu waiting   %s   %s/s   %s", mReceipts.size(),
        inWork - waiting, waiting, bytes(static_cast<double>(mBytes)).c_str(), bytes(mRate->rate()).c_str(),
        duration(elapsed()).c_str());
    std::fflush(stdout);
}

void Progress::printTable()
{
    std::vector<Receipt> rows = mReceipts;
    std::stable_sort(
        rows.begin(), rows.end(), [](const Receipt& a, const Receipt& b) { return a.size > b.size; });
    std::printf("%s\n%-34s %10s %10s %6s  %-8s  %-40s %9s\n", mOnTerminal ? "\r\033[K" : "", "file", "size",
        "stored", "ratio", "CRC-32", "SHA-1", "time");
    for (std::size_t at = 0; at < std::min(rows.size(), kRows); ++at) {
        const Receipt& row = rows[at];
        const double ratio =
            row.size ? 100.0 * static_cast<double>(row.stored) / static_cast<double>(row.size) : 100;
        std::printf("%-34s %10s %10s %5.1f%%  %08x  %-40s %9s\n", cut(row.name, 34).c_str(),
            bytes(static_cast<double>(row.size)).c_str(), bytes(static_cast<double>(row.stored)).c_str(),
            ratio, row.crc32, row.sha1.c_str(), duration(row.seconds).c_str());
    }
    if (rows.size() > kRows)
        std::printf("... and %zu smaller ones\n", rows.size() - kRows);
    for (const Receipt& row : rows)
        if (!row.failure.empty())
            std::printf("FAILED %s: %s\n", row.name.c_str(), row.failure.c_str());
    const double seconds = elapsed();
    std::printf("%zu files, %zu failed; %s in, %s stored; %s; %s/s\n", rows.size(), mFailed,
        bytes(static_cast<double>(mBytes)).c_str(), bytes(static_cast<double>(mStored)).c_str(),
        duration(seconds).c_str(), bytes(static_cast<double>(mBytes) / seconds).c_str());
    std::fflush(stdout);
}
