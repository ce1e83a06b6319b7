#include "platform/runloop/observer_table.h"

#include <algorithm>

namespace platform {

void ObserverTable::add(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    MutexLock lock(mLock);
    addLocked(observer, selector, name, object);
}

void ObserverTable::remove(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
{
    MutexLock lock(mLock);
    removeLocked(observer, name, object);
}

void ObserverTable::replace(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    MutexLock lock(mLock);
    removeLocked(observer, name, object);
    addLocked(observer, selector, name, object);
}

void ObserverTable::addLocked(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    if (mCount >= mCountToLookForDead)
        removeDead();
    auto observation = std::make_shared<Observation>(observer, selector, name, object, mNextOrder++);
    Observation& added = *observation;
    Name& under = nameFor(name);
    Observer& of = mObservers[added.observerAddress];
    added.list = added.objectAddress ? &under.byObject[added.objectAddress] : &under.anyObject;
    added.list->add(std::move(observation));

    added.nextOfObserver = of.first;
    if (of.first)
        of.first->previousOfObserver = &added;
    of.first = &added;
    ++of.count;
    ++under.count;
    ++mCount;
}

void ObserverTable::removeLocked(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
{
    auto of = mObservers.find(observer.get());
    if (of == mObservers.end())
        return;
    if (!name)
        return removeByObserver(observer, nullptr, object);
    Name* under = findName(name);
    if (!under)
        return;
    if (under->count < of->second.count)
        removeByName(*under, observer, object);
    else
        removeByObserver(observer, name, object);
}

ObserverTable::Matches ObserverTable::matches(const NSRef<NSString>& name, const NSId& object)
{
    Matches matches;
    auto take = [&matches](const ObserverList& list) {
        if (list.count() > 0)
            matches.lists[matches.count++] = list.snapshot();
    };
    auto takeAll = [&](const Name& from) {
        take(from.anyObject);
        if (!object || from.byObject.empty())
            return;
        if (auto found = from.byObject.find(object.get()); found != from.byObject.end())
            take(found->second);
    };
    MutexLock lock(mLock);
    takeAll(mAnyName);
    if (Name* found = findName(name))
        takeAll(*found);
    return matches;
}

std::size_t ObserverTable::count()
{
    MutexLock lock(mLock);
    return mCount;
}

ObserverTable::Name& ObserverTable::nameFor(const NSRef<NSString>& text)
{
    if (!text)
        return mAnyName;
    Name& name = mNames[text->characters()];
    if (!name.text)
        name.text = text; // whose characters are the key
    return name;
}

ObserverTable::Name* ObserverTable::findName(const NSRef<NSString>& text)
{
    if (!text)
        return &mAnyName;
    auto found = mNames.find(text->characters());
    return found == mNames.end() ? nullptr : &found->second;
}

void ObserverTable::removeByName(Name& name, const NSId& observer, const NSId& object)
{
    // Unlinking may rewrite a list and end the name, so first find all.
    std::vector<std::shared_ptr<Observation>> found;
    auto find = [&](const ObserverList& list) {
        for (const auto& observation : list.snapshot())
            if (!observation->isRemoved && observation->observerAddress == observer.get())
                found.push_back(observation);
    };
    if (object) {
        if (auto list = name.byObject.find(object.get()); list != name.byObject.end())
            find(list->second);
    } else {
        find(name.anyObject);
        for (const auto& list : name.byObject)
            find(list.second);
    }
    for (const auto& observation : found)
        unlink(*observation);
}

void ObserverTable::removeByObserver(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
{
    Observation* next = mObservers.find(observer.get())->second.first;
    while (Observation* observation = next) {
        next = observation->nextOfObserver;
        bool sameName = !name || (observation->name && observation->name->characters() == name->characters());
        bool sameObject = !object || observation->objectAddress == object.get();
        if (sameName && sameObject)
            unlink(*observation);
    }
}

/// Forgets registrations whose observer or object has ended, which nobody will remove.
void ObserverTable::removeDead()
{
    std::vector<Observation*> dead;
    for (const auto& [address, observer] : mObservers)
        for (Observation* at = observer.first; at; at = at->nextOfObserver)
            if (at->isDead())
                dead.push_back(at);
    for (Observation* observation : dead)
        unlink(*observation);
    // Twice as many have to arrive before it is worth looking again, which makes it constant time for each.
    mCountToLookForDead = std::max(2 * mCount, kFew);
}

void ObserverTable::unlink(Observation& observation)
{
    observation.isRemoved = true;
    --mCount;

    auto of = mObservers.find(observation.observerAddress);
    (observation.previousOfObserver ? observation.previousOfObserver->nextOfObserver : of->second.first) =
        observation.nextOfObserver;
    if (observation.nextOfObserver)
        observation.nextOfObserver->previousOfObserver = observation.previousOfObserver;
    if (--of->second.count == 0)
        mObservers.erase(of);

    Name& name = *findName(observation.name);
    NSRef<NSString> text = observation.name;
    const NSObject* object = observation.objectAddress;
    ObserverList& list = *observation.list;
    list.didRemoveOne(); // which may end the registration
    if (object && list.count() == 0)
        name.byObject.erase(object);
    if (--name.count == 0 && text)
        mNames.erase(text->characters());
}

}
