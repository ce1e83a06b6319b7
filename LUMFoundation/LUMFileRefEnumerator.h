#pragma once

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/FSIterator.h"
#include "LUMPlatform/NSEnumerator.h"

/// The children of a folder one by one, as they are read: nothing is kept in store.
///
/// It holds the folder's handle, and one descriptor, for as long as it lives. Threads: one at a time.
///
///     if (auto children = folder->childEnumerator())
///         for (const NSId& child : children)
///             std::cout << child << '\n';
class LUM_EXPORT LUMFileRefEnumerator : public NSEnumerator {
public:
    static const NSClass& classObject();

    /// Null when it is null, not a folder, or cannot be read.
    /// Selector: initWithFileRef:
    static NSRef<LUMFileRefEnumerator> initWithFileRef(const NSRef<LUMFileRef>& fileRef);

    /// Deliberate: all visible children, whatever nextObject has already handed out.
    NSRef<NSArray> allObjects() override;
    /// The next visible child, a LUMFileRef; links are followed, one that dangles is there itself. Null at
    /// the end, and when the folder cannot be read on. Deliberate: when the entries that are left are all
    /// hidden, the last of them is handed out once.
    NSId nextObject() override;

protected:
    explicit LUMFileRefEnumerator(const NSRef<LUMFileRef>& fileRef);
    ~LUMFileRefEnumerator() override;

private:
    const NSRef<LUMFileRef> mFileRef;
    FSIterator iterator;
};
