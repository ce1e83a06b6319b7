#include "platform/archiving/keyed_classes.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "platform/archiving/keyed_format.h"
#include "platform/proplists/property_list_fault.h"

namespace platform {
namespace {

/// Names in archives are short; the longest text that is taken for one bounds what a delegate is shown.
constexpr std::uint64_t kLongestName = 1000;
constexpr std::uint64_t kMostClasses = 1000;

NSRef<NSString> nameAt(const BinaryObjects& objects, std::uint64_t number)
{
    const auto text = objects.object(number);
    if ((text.type != binary::kAscii && text.type != binary::kUtf16) || text.count > kLongestName)
        throw PropertyListFault("a class has no name");
    return NSCast<NSString>(objects.value(text));
}

NSRef<NSArray> namesOfClasses(KeyedArchive& archive, const KeyedArchive::Object& record)
{
    std::vector<NSId> names;
    if (const auto found = archive.find(record, keyed::kClassesKey)) {
        const auto classes = archive.objects().object(*found);
        if (classes.type != binary::kArray || classes.count > kMostClasses)
            throw PropertyListFault("a class has no list of those above it");
        archive.objects().claim(classes);
        for (std::uint64_t at = 0; at < classes.count; ++at)
            names.emplace_back(nameAt(archive.objects(), archive.objects().reference(classes, at)));
    }
    return NSArray::arrayWithObjects(std::move(names));
}

}

void KeyedClasses::setClass(const NSClass& type, const NSRef<NSString>& name)
{
    mSubstitutes[name->utf8()] = &type;
    for (auto& [record, coding] : mKnown)
        coding = nullptr;
}

const ClassCoding* KeyedClasses::codingNamed(const NSRef<NSString>& name) const
{
    const auto substitute = mSubstitutes.find(name->utf8());
    if (substitute != mSubstitutes.end())
        return classCoding(*substitute->second);
    return classCodingNamed(name->utf8());
}

const ClassCoding& KeyedClasses::codingOfRecord(std::uint64_t record, KeyedArchive& archive,
    NSKeyedUnarchiver& unarchiver, const NSRef<NSKeyedUnarchiverDelegate>& delegate)
{
    const auto [place, isNew] = mKnown.emplace(record, nullptr);
    const ClassCoding*& known = place->second;
    if (known)
        return *known;

    const auto object = archive.objects().object(record);
    if (isNew)
        archive.objects().claim(object);
    const auto nameNumber =
        object.type == binary::kDictionary ? archive.find(object, keyed::kClassNameKey) : std::nullopt;
    if (!nameNumber)
        throw PropertyListFault("an object has no class");
    const auto name = nameAt(archive.objects(), *nameNumber);
    const ClassCoding* coding = codingNamed(name);
    if (!coding && delegate) {
        const NSClass* substitute = delegate->unarchiverCannotDecodeObjectOfClassName(
            unarchiver, name, namesOfClasses(archive, object));
        coding = substitute ? classCoding(*substitute) : nullptr;
    }
    if (!coding)
        throw PropertyListFault("the class \"" + name->utf8() + "\" of an object is not registered");
    known = coding;
    return *coding;
}

}
