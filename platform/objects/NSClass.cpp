#include "LUMPlatform/NSClass.h"

#include "LUMPlatform/NSMethodSignature.h"
#include "platform/objects/mutex.h"

#include <bit>
#include <memory>
#include <unordered_map>

namespace {

/// Grows whenever an extension arrives, so that tables made before are known to be old.
std::atomic<unsigned> sGeneration { 1 };

}

/// Open addressing over a power of two, at most half full. Never changed once published; an old table is
/// kept, since another thread may be reading it, and there are as many as there were extensions.
struct NSClass::Table {
    unsigned generation = 0;
    std::size_t mask = 0;
    std::vector<Entry> entries;

    explicit Table(std::size_t methods, unsigned generation_)
        : generation(generation_), mask(std::bit_ceil(methods * 2 + 2) - 1), entries(mask + 1)
    {
    }

    void addIfAbsent(Entry added)
    {
        for (std::size_t at = added.selector.hash() & mask;; at = (at + 1) & mask) {
            if (entries[at].selector == added.selector)
                return;
            if (!entries[at].selector) {
                entries[at] = added;
                return;
            }
        }
    }

    Entry find(NSSelector selector) const
    {
        for (std::size_t at = selector.hash() & mask;; at = (at + 1) & mask) {
            const Entry& entry = entries[at];
            if (entry.selector == selector || !entry.selector)
                return entry;
        }
    }
};

struct NSClassRegistry {
    static NSClassRegistry& shared()
    {
        // Never destroyed: classes are asked until the very end of the process.
        static NSClassRegistry& registry = *new NSClassRegistry;
        return registry;
    }

    const NSClass& define(std::string_view name, const NSClass* superclass, std::span<const NSMethod> methods)
    {
        auto type = std::unique_ptr<NSClass>(new NSClass(name, superclass, methods));
        platform::MutexLock lock(mLock);
        const NSClass& defined = *mClasses.emplace_back(std::move(type));
        mByName.emplace(name, &defined);
        return defined;
    }

    const NSClass* named(std::string_view name)
    {
        platform::MutexLock lock(mLock);
        auto found = mByName.find(name);
        return found == mByName.end() ? nullptr : found->second;
    }

    void extend(const NSClass& type, std::span<const NSMethod> methods)
    {
        platform::MutexLock lock(mLock);
        type.mExtensions.push_back(methods);
        sGeneration.fetch_add(1, std::memory_order_release);
    }

    std::vector<std::span<const NSMethod>> extensions(const NSClass& type)
    {
        platform::MutexLock lock(mLock);
        return type.mExtensions;
    }

    const NSClass::Table& rebuild(const NSClass& type)
    {
        platform::MutexLock lock(mLock);
        std::size_t count = 0;
        for (const NSClass* at = &type; at; at = at->mSuperclass) {
            count += at->mMethods.size();
            for (auto extension : at->mExtensions)
                count += extension.size();
        }
        auto table = std::make_unique<NSClass::Table>(count, sGeneration.load(std::memory_order_acquire));
        for (const NSClass* at = &type; at; at = at->mSuperclass)
            addAll(*table, at->mMethods, false);
        for (const NSClass* at = &type; at; at = at->mSuperclass)
            for (auto extension : at->mExtensions)
                addAll(*table, extension, true);
        const NSClass::Table& published = *mTables.emplace_back(std::move(table));
        type.mTable.store(&published, std::memory_order_release);
        return published;
    }

private:
    static void addAll(NSClass::Table& table, std::span<const NSMethod> methods, bool fromExtension)
    {
        for (const NSMethod& method : methods)
            table.addIfAbsent({ NSSelector(method.selector), &method, fromExtension });
    }

    platform::Mutex mLock; // also guards the extension lists of the classes
    std::vector<std::unique_ptr<NSClass>> mClasses NS_GUARDED_BY(mLock);
    std::vector<std::unique_ptr<NSClass::Table>> mTables NS_GUARDED_BY(mLock);
    std::unordered_map<std::string_view, const NSClass*> mByName NS_GUARDED_BY(mLock);
};

NSClass::NSClass(std::string_view name, const NSClass* superclass, std::span<const NSMethod> methods)
    : mName(name), mSuperclass(superclass), mMethods(methods)
{
}

const NSClass& NSClass::define(
    std::string_view name, const NSClass* superclass, std::span<const NSMethod> methods)
{
    return NSClassRegistry::shared().define(name, superclass, methods);
}

const NSClass* NSClass::named(std::string_view name)
{
    return NSClassRegistry::shared().named(name);
}

void NSClass::extend(std::span<const NSMethod> methods) const
{
    NSClassRegistry::shared().extend(*this, methods);
}

std::vector<std::span<const NSMethod>> NSClass::extensions() const
{
    return NSClassRegistry::shared().extensions(*this);
}

bool NSClass::isSubclassOf(const NSClass& other) const
{
    for (const NSClass* at = this; at; at = at->mSuperclass)
        if (at == &other)
            return true;
    return false;
}

const NSClass::Table& NSClass::currentTable() const
{
    const Table* table = mTable.load(std::memory_order_acquire);
    if (table && table->generation == sGeneration.load(std::memory_order_acquire))
        return *table;
    return NSClassRegistry::shared().rebuild(*this);
}

NSClass::Entry NSClass::find(NSSelector selector) const
{
    if (!selector)
        return {};
    return currentTable().find(selector);
}

NSRef<NSMethodSignature> NSClass::instanceMethodSignature(NSSelector selector) const
{
    const NSMethod* method = instanceMethod(selector);
    return method ? NSMethodSignature::signatureOfMethod(*method) : nullptr;
}
