#pragma once

#include "LUMPlatform/NSObject.h"

#include <cstddef>
#include <iterator>

/// What every collection's begin() and end() give: a walk that keeps each element alive while it is looked
/// at, and that raises NSGenericException at its next step when the collection was changed meanwhile.
///
/// `Collection` has `Element elementAtPosition(position)`, `nextPosition(position)` for the first filled
/// position from there on, and `mutations()`, which counts its changes. Elements come by value.
///
///     for (const NSId& element : array) // an NSRef or the collection itself; an NSRef must not be null
///         std::cout << element << '\n';
template<typename Collection, typename Element> class NSFastEnumerator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Element;

    NSFastEnumerator() = default;
    NSFastEnumerator(const Collection& collection, NSUInteger position)
        : mCollection(&collection), mPosition(position), mMutations(collection.mutations())
    {
    }

    Element operator*() const
    {
        checkUnchanged();
        return mCollection->elementAtPosition(mPosition);
    }
    NSFastEnumerator& operator++()
    {
        checkUnchanged();
        mPosition = mCollection->nextPosition(mPosition + 1);
        return *this;
    }
    NSFastEnumerator operator++(int)
    {
        auto before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const NSFastEnumerator& a, const NSFastEnumerator& b)
    {
        return a.mPosition == b.mPosition;
    }

private:
    void checkUnchanged() const
    {
        if (mCollection->mutations() != mMutations)
            NSRaiseEnumerationMutation(*mCollection);
    }

    const Collection* mCollection = nullptr;
    NSUInteger mPosition = 0;
    NSUInteger mMutations = 0;
};

/// Raises NSGenericException: "Collection <Class: 0x...> was mutated while being enumerated."
[[noreturn]] NS_EXPORT void NSRaiseEnumerationMutation(const NSObject& collection);

template<typename T>
concept NSEnumerable = requires(T& collection)
{
    collection.begin();
    collection.end();
};

/// A loop over a reference keeps the collection alive, one over `*makeArray()` would not.
template<NSEnumerable T> auto begin(const NSRef<T>& collection)
{
    return collection->begin();
}
template<NSEnumerable T> auto end(const NSRef<T>& collection)
{
    return collection->end();
}
