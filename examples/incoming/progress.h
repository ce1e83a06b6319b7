#pragma once

#include "examples/incoming/receipt.h"

#include "LUMFoundation/LUMRateReporter.h"

#include <vector>

/// Tells a person how far the work is: a live line on a terminal, a plain line a file elsewhere, a table at
/// the end.
class Progress {
public:
    explicit Progress(bool onTerminal);

    void fileEnded(const Receipt& receipt);
    void refresh(std::size_t inWork, std::size_t waiting); ///< The live line; nothing elsewhere.
    void printTable();

    const std::vector<Receipt>& receipts() const { return mReceipts; }
    std::size_t filesEnded() const { return mReceipts.size(); }
    std::size_t filesFailed() const { return mFailed; }

private:
    double elapsed() const;

    const bool mOnTerminal;
    const double mBegan;
    NSRef<LUMRateReporter> mRate;
    std::vector<Receipt> mReceipts;
    std::size_t mFailed = 0;
    std::uint64_t mBytes = 0;
    std::uint64_t mStored = 0;
};
