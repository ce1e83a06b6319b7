#include "LUMPlatform/NSCoding.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSet.h"
#include "platform/archiving/class_codings.h"
#include "platform/objects/mutex.h"

#include <memory>
#include <unordered_map>

namespace platform {

namespace {

/// All registered classes. What is there stays as it is, so pointers into it are used without the lock.
class CodingRegistry {
public:
    static CodingRegistry& shared()
    {
        // Never destroyed: objects are archived until the very end of the process.
        static CodingRegistry& registry = *new CodingRegistry;
        return registry;
    }

    void add(const ClassCoding& coding)
    {
        MutexLock lock(mLock);
        addLocked(coding);
    }
    const ClassCoding* find(const NSClass& type)
    {
        MutexLock lock(mLock);
        auto found = mByClass.find(&type);
        return found == mByClass.end() ? nullptr : found->second.get();
    }
    const ClassCoding* find(std::string_view name)
    {
        MutexLock lock(mLock);
        auto found = mByName.find(name);
        return found == mByName.end() ? nullptr : found->second;
    }

private:
    CodingRegistry()
    {
        MutexLock lock(mLock);
        addLocked({ &NSString::classObject(), CodedKind::String });
        addLocked({ &NSMutableString::classObject(), CodedKind::MutableString });
        addLocked({ &NSNumber::classObject(), CodedKind::Number });
        addLocked({ &NSData::classObject(), CodedKind::Data });
        addLocked({ &NSArray::classObject(), CodedKind::Array });
        addLocked({ &NSMutableArray::classObject(), CodedKind::MutableArray });
        addLocked({ &NSDictionary::classObject(), CodedKind::Dictionary });
        addLocked({ &NSMutableDictionary::classObject(), CodedKind::MutableDictionary });
        addLocked({ &NSSet::classObject(), CodedKind::Set });
        addLocked({ &NSMutableSet::classObject(), CodedKind::MutableSet });
        for (const ClassCoding& coding : valueCodings())
            addLocked(coding);
    }

    void addLocked(const ClassCoding& coding) NS_REQUIRES(mLock)
    {
        auto& kept = mByClass[coding.type];
        if (kept)
            return;
        kept = std::make_unique<ClassCoding>(coding);
        mByName.emplace(coding.type->name(), kept.get());
    }

    Mutex mLock;
    std::unordered_map<const NSClass*, std::unique_ptr<ClassCoding>> mByClass NS_GUARDED_BY(mLock);
    std::unordered_map<std::string_view, const ClassCoding*> mByName NS_GUARDED_BY(mLock);
};

}

const ClassCoding* classCoding(const NSClass& type)
{
    return CodingRegistry::shared().find(type);
}

const ClassCoding* classCodingNamed(std::string_view name)
{
    return CodingRegistry::shared().find(name);
}

const ClassCoding& requiredClassCoding(const NSObject& object)
{
    if (const ClassCoding* coding = classCoding(object.isa()))
        return *coding;
    throw NSException(NSInvalidArgumentException,
        "objects of class " + std::string(object.isa().name())
            + " cannot be archived: the class is not registered (NSCoding::registerClass)");
}

}

void NSCoding::registerClassCoding(const NSClass& type, const NSClassCoding& coding)
{
    platform::CodingRegistry::shared().add({ &type, platform::CodedKind::Custom, coding });
}

std::span<const NSMethod> NSCoding::methods()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"encodeWithCoder:", &NSCoding::encodeWithCoder>(),
    };
    return kMethods;
}
