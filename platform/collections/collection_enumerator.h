#pragma once

#include "LUMPlatform/NSEnumerator.h"

namespace platform {

/// Hands out `read(element)` for each element of a collection. It keeps the collection itself, not a copy, so
/// a change between two calls raises NSGenericException as in a loop.
template<typename Collection, typename Read> class CollectionEnumerator : public NSEnumerator {
public:
    NSId nextObject() override
    {
        if (!mCollection)
            return nullptr;
        if (mCollection->mutations() != mMutations) // before the end is asked for, which may have moved
            NSRaiseEnumerationMutation(*mCollection);
        if (mAt == mCollection->end()) {
            mCollection = nullptr;
            return nullptr;
        }
        NSId object = mRead(*mAt);
        ++mAt;
        return object;
    }

protected:
    CollectionEnumerator(const NSRef<Collection>& collection, Read read)
        : mCollection(collection), mMutations(collection->mutations()), mAt(collection->begin()), mRead(read)
    {
    }
    ~CollectionEnumerator() override = default;

private:
    NSRef<Collection> mCollection;
    NSUInteger mMutations;
    typename Collection::Iterator mAt;
    Read mRead;
};

template<typename Collection, typename Read>
NSRef<NSEnumerator> enumeratorOf(const Collection& collection, Read read)
{
    return NSMake<CollectionEnumerator<Collection, Read>>(
        NSShare(const_cast<Collection*>(&collection)), read);
}

}
