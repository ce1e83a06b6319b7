#pragma once

#include "LUMPlatform/NSFastEnumeration.h"

#include <cstddef>
#include <iterator>

class NSArray;

/// The base of what hands out objects one by one. It keeps what it walks over alive. Threads: one at a time.
///
///     auto names = table->keyEnumerator();
///     while (NSId name = names->nextObject())
///         std::cout << name << '\n';
class NS_EXPORT NSEnumerator : public NSObject {
public:
    static const NSClass& classObject();

    /// The next object; null once there is none, and from then on.
    /// Selector: nextObject
    virtual NSId nextObject() = 0;
    virtual NSRef<NSArray> allObjects(); ///< Those not handed out yet; uses them up. Selector: allObjects

    /// A loop takes the objects not handed out yet; there is one pass.
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = NSId;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = const NSId&;

        const NSId& operator*() const { return mCurrent; }
        Iterator& operator++()
        {
            mCurrent = mEnumerator->nextObject();
            return *this;
        }
        void operator++(int) { ++*this; }
        friend bool operator==(const Iterator& at, std::default_sentinel_t) { return !at.mCurrent; }

    private:
        friend class NSEnumerator;
        explicit Iterator(NSEnumerator& enumerator)
            : mEnumerator(&enumerator), mCurrent(enumerator.nextObject())
        {
        }
        NSEnumerator* mEnumerator;
        NSId mCurrent;
    };
    Iterator begin() { return Iterator(*this); }
    std::default_sentinel_t end() const { return {}; }

protected:
    NSEnumerator() = default;
    ~NSEnumerator() override;
};
