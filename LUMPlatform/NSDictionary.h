#pragma once

#include "LUMPlatform/NSFastEnumeration.h"

#include <initializer_list>
#include <memory>
#include <span>

class NSArray;
class NSEnumerator;
class NSError;
class NSMutableDictionary;
namespace platform {
class DictionaryTable;
}

/// An immutable table of objects by key. It owns its values and copies its keys (by copy()), so that a key
/// changed later changes nothing here; keys are told apart by isEqual and hash. Neither is ever null: null
/// raises NSInvalidArgumentException.
///
/// Loops, allKeys and allValues give the entries in the order in which their keys were first set. Reading and
/// writing an entry take constant time on average.
/// Threads: immutable dictionaries may be shared; a mutable one belongs to one thread at a time.
///
///     auto table = NSDictionary::of({ { "name", "Intro" }, { "seconds", 12 } });
///     for (const auto& [key, value] : table)
///         std::cout << key << " is " << value << '\n';
class NS_EXPORT NSDictionary : public NSObject {
public:
    struct Entry {
        NSId key;
        NSId value;
    };

    static const NSClass& classObject();

    /// A dictionary of the pairs; of a repeated key the last value counts. Null raises.
    static NSRef<NSDictionary> of(std::initializer_list<Entry> entries);
    static NSRef<NSDictionary> dictionary(); ///< Selector: dictionary
    /// Selector: dictionaryWithObject:forKey:
    static NSRef<NSDictionary> dictionaryWithObject(const NSId& object, const NSId& key);
    /// Pairs the two lists up. Raises NSInvalidArgumentException when their counts differ.
    /// Selector: dictionaryWithObjects:forKeys:
    static NSRef<NSDictionary> dictionaryWithObjects(
        const NSRef<NSArray>& objects, const NSRef<NSArray>& keys);
    /// The same with plain lists.
    /// Selector: dictionaryWithObjects:forKeys:count:
    static NSRef<NSDictionary> dictionaryWithObjectsCount(
        std::span<const NSId> objects, std::span<const NSId> keys);
    /// Reads value, key, value, key, ... and stops at the first null, with what it had read; a null key after
    /// a value raises NSInvalidArgumentException.
    /// Selector: dictionaryWithObjectsAndKeys:
    static NSRef<NSDictionary> dictionaryWithObjectsAndKeys(std::initializer_list<NSId> objectsAndKeys);
    /// The same entries; empty for null.
    /// Selector: dictionaryWithDictionary:
    static NSRef<NSDictionary> dictionaryWithDictionary(const NSRef<NSDictionary>& other);

    /// The dictionary at the top of a property list, whatever its format. Null, with an error, when the file
    /// cannot be read (a status), is no property list, or has something else at its top (see
    /// NSPropertyListSerialization).
    /// Selector: dictionaryWithContentsOfFile:
    static NSRef<NSDictionary> dictionaryWithContentsOfFile(
        const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// Writes the dictionary as a property list in XML; in one step when `atomically`, as NSData does. False,
    /// with an error, when it is no property list (then nothing is written) or the file cannot be written.
    /// Selector: writeToFile:atomically:
    [[nodiscard]] bool writeToFile(
        const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error = nullptr) const;

    NSUInteger count() const; ///< Selector: count
    /// As a `T`; null when there is none, or the value is no T, or `key` is null.
    /// Selector: objectForKey:
    template<typename T = NSObject> NSRef<T> objectForKey(const NSId& key) const
    {
        return NSCast<T>(valueOf(key));
    }
    NSRef<NSArray> allKeys() const; ///< Selector: allKeys
    NSRef<NSArray> allValues() const; ///< In the order of allKeys. Selector: allValues
    NSRef<NSEnumerator> keyEnumerator() const; ///< Selector: keyEnumerator
    NSRef<NSEnumerator> objectEnumerator() const; ///< Selector: objectEnumerator

    using Iterator = NSFastEnumerator<NSDictionary, Entry>;
    Iterator begin() const { return { *this, nextPosition(0) }; }
    Iterator end() const { return { *this, endPosition() }; }
    // What NSFastEnumerator asks, with positions that it was given.
    Entry elementAtPosition(NSUInteger position) const;
    NSUInteger nextPosition(NSUInteger position) const;
    NSUInteger mutations() const;

    bool isEqualToDictionary(const NSRef<NSDictionary>& other) const; ///< Selector: isEqualToDictionary:
    /// Equal values under equal keys, in whatever order and class. Raises NSInvalidArgumentException beyond
    /// 2,000 levels, which one that contains itself has.
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    /// "{\n    key = value;\n}", inner collections indented, by ascending key when all keys are strings.
    NSRef<NSString> description() const override;
    NSId copy() const override; ///< Itself.
    NSId mutableCopy() const override;

protected:
    NSDictionary();
    explicit NSDictionary(const NSDictionary* other);
    ~NSDictionary() override;

    void set(const NSId& object, const NSId& key, const char* operation);

    std::unique_ptr<platform::DictionaryTable> mTable;

private:
    NSId valueOf(const NSId& key) const;
    NSUInteger endPosition() const;
};

/// A table of objects by key that can be changed. Changing it during a loop over it raises NSGenericException
/// at the loop's next step. Threads: one at a time.
///
///     auto settings = NSMutableDictionary::dictionary();
///     settings->setObject(0.5, "volume");
///     settings->removeObjectForKey("muted");
class NS_EXPORT NSMutableDictionary : public NSDictionary {
public:
    static const NSClass& classObject();

    static NSRef<NSMutableDictionary> of(std::initializer_list<Entry> entries);
    static NSRef<NSMutableDictionary> dictionary(); ///< Selector: dictionary
    /// Selector: dictionaryWithCapacity:
    static NSRef<NSMutableDictionary> dictionaryWithCapacity(NSUInteger capacity);
    /// Selector: dictionaryWithDictionary:
    static NSRef<NSMutableDictionary> dictionaryWithDictionary(const NSRef<NSDictionary>& other);

    /// Replaces the value of a key that is there, which keeps its place in the order.
    /// Selector: setObject:forKey:
    void setObject(const NSId& object, const NSId& key);
    /// Nothing happens when there is none. A null key raises.
    /// Selector: removeObjectForKey:
    void removeObjectForKey(const NSId& key);
    /// Nothing for null.
    /// Selector: removeObjectsForKeys:
    void removeObjectsForKeys(const NSRef<NSArray>& keys);
    void removeAllObjects(); ///< Selector: removeAllObjects
    /// Its entries replace those of equal keys. Nothing for null.
    /// Selector: addEntriesFromDictionary:
    void addEntriesFromDictionary(const NSRef<NSDictionary>& other);
    void setDictionary(const NSRef<NSDictionary>& other); ///< Empties it for null. Selector: setDictionary:

    NSId copy() const override; ///< An immutable dictionary of the same entries.

protected:
    NSMutableDictionary() = default;
    explicit NSMutableDictionary(const NSDictionary* other);
    ~NSMutableDictionary() override;
};
