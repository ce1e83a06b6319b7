#pragma once

#include "LUMPlatform/NSMethod.h"

#include <atomic>
#include <span>
#include <string_view>
#include <vector>

/// What a class is at run time: its name, its superclass, and the methods that answer dynamic calls.
///
/// A class is defined once, by a static function of its C++ type, and lives as long as the process:
///
///     class Track : public NSObject {
///     public:
///         static const NSClass& classObject()
///         {
///             static constexpr NSMethod kMethods[] = { NSMethodOf<"play", &Track::play>() };
///             static const NSClass& type = NSClass::define("Track", &NSObject::classObject(), kMethods);
///             return type;
///         }
///         void play();
///     };
///
/// A type that defines none has the class of its base. Threads: any.
class NS_EXPORT NSClass {
public:
    /// Makes the class known under `name`; a name that is taken goes on naming the first class. The table is
    /// not copied and must live as long as the process.
    static const NSClass& define(
        std::string_view name, const NSClass* superclass, std::span<const NSMethod> methods);
    /// The class of that name, as far as it has been used; null when there is none.
    static const NSClass* named(std::string_view name);

    /// Gives the operations of an extension set to a class and all that derive from it. A method that a class
    /// of the chain defines itself goes before. The table must live as long as the process.
    void extend(std::span<const NSMethod> methods) const;

    std::string_view name() const { return mName; }
    const NSClass* superclass() const { return mSuperclass; }
    bool isSubclassOf(const NSClass& other) const;

    /// The method that answers `selector`: the class's own, an inherited one, then one of an extension set;
    /// null when nothing does. One hash look-up, without a lock.
    const NSMethod* instanceMethod(NSSelector selector) const { return find(selector).method; }
    /// The method by which this class or one above it defines for itself what an extension set adds; null
    /// when only the extension answers. The extension's function asks this, so that a class can override it.
    const NSMethod* overridingMethod(NSSelector selector) const
    {
        Entry entry = find(selector);
        return entry.fromExtension ? nullptr : entry.method;
    }
    /// The types of that method; null when nothing answers.
    NSRef<NSMethodSignature> instanceMethodSignature(NSSelector selector) const;

    /// The class's own table, without what it inherits and without extensions.
    std::span<const NSMethod> ownMethods() const { return mMethods; }
    std::vector<std::span<const NSMethod>> extensions() const;

    NSClass(const NSClass&) = delete;
    NSClass& operator=(const NSClass&) = delete;

private:
    friend struct NSClassRegistry;
    struct Entry {
        NSSelector selector;
        const NSMethod* method = nullptr;
        bool fromExtension = false;
    };
    struct Table; // all that the class answers, flattened into one hash table

    NSClass(std::string_view name, const NSClass* superclass, std::span<const NSMethod> methods);
    Entry find(NSSelector selector) const;
    const Table& currentTable() const;

    std::string_view mName;
    const NSClass* mSuperclass;
    std::span<const NSMethod> mMethods;
    mutable std::vector<std::span<const NSMethod>> mExtensions;
    mutable std::atomic<const Table*> mTable { nullptr };
};
