#pragma once

#include "examples/incoming/receipt.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSCoding.h"

/// What the bundle keeps of a file that was taken in: its receipt, and a reference to its source that finds
/// it again wherever that is moved on its volume.
class FileRecord : public NSObject, public NSCoding {
public:
    static const NSClass& classObject();
    static NSRef<FileRecord> recordOf(const Receipt& receipt, const NSRef<LUMFileRef>& source);
    static NSRef<FileRecord> initWithCoder(NSCoder& coder);
    void encodeWithCoder(NSCoder& coder) const override;

    const Receipt& receipt() const { return mReceipt; }
    NSRef<LUMFileRef> source() const { return mSource; } ///< Null when there was nothing to be found.
    NSRef<NSString> description() const override; ///< A line for each value.

protected:
    FileRecord(const Receipt& receipt, const NSRef<LUMFileRef>& source);
    ~FileRecord() override;

private:
    const Receipt mReceipt;
    const NSRef<LUMFileRef> mSource;
};
