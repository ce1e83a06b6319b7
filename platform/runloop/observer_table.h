#pragma once

#include "platform/objects/mutex.h"
#include "platform/runloop/observer_list.h"

#include <array>
#include <string_view>
#include <unordered_map>

namespace platform {

/// All registrations with one notification centre, found by what is posted and by who observes. Threads: any.
///
/// A registration takes constant time. A removal takes time in the number of registrations of that observer,
/// or of that name, whichever is less.
class ObserverTable {
public:
    /// The registrations that match one posting: at most one list for its name and one for any name, each for
    /// its object and for any.
    struct Matches {
        std::array<ObserverList::Snapshot, 4> lists;
        std::size_t count = 0;
    };

    void add(const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object);

    /// Removes the observer's registrations that were made with that name and object. A null name or object
    /// leaves it out of the comparison; it is not the null of a registration.
    void remove(const NSId& observer, const NSRef<NSString>& name, const NSId& object);

    /// The two, with nothing in between.
    void replace(const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object);

    Matches matches(const NSRef<NSString>& name, const NSId& object);

    /// Registrations, of which some may be of observers that have ended.
    std::size_t count();

private:
    static constexpr std::size_t kFew = 64;

    /// The registrations for one name, or for any.
    struct Name {
        NSRef<NSString> text;
        ObserverList anyObject;
        std::unordered_map<const NSObject*, ObserverList> byObject;
        std::size_t count = 0;
    };
    /// The registrations of one observer, chained.
    struct Observer {
        Observation* first = nullptr;
        std::size_t count = 0;
    };

    void addLocked(const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
        NS_REQUIRES(mLock);
    void removeLocked(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
        NS_REQUIRES(mLock);
    Name& nameFor(const NSRef<NSString>& text) NS_REQUIRES(mLock);
    Name* findName(const NSRef<NSString>& text) NS_REQUIRES(mLock);
    void removeByName(Name& name, const NSId& observer, const NSId& object) NS_REQUIRES(mLock);
    void removeByObserver(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
        NS_REQUIRES(mLock);
    void removeDead() NS_REQUIRES(mLock);
    void unlink(Observation& observation) NS_REQUIRES(mLock);

    Mutex mLock;
    Name mAnyName NS_GUARDED_BY(mLock);
    std::unordered_map<std::u16string_view, Name> mNames NS_GUARDED_BY(mLock);
    std::unordered_map<const NSObject*, Observer> mObservers NS_GUARDED_BY(mLock);
    std::uint64_t mNextOrder NS_GUARDED_BY(mLock) = 0;
    std::size_t mCount NS_GUARDED_BY(mLock) = 0;
    std::size_t mCountToLookForDead NS_GUARDED_BY(mLock) = kFew;
};

}
