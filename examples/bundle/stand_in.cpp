#include "examples/bundle/stand_in.h"

#include "examples/bundle/bundle_contents.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"

namespace {

class UnknownObject : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("UnknownObject", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<UnknownObject> initWithCoder(NSCoder&) { return NSMake<UnknownObject>(); }
    void encodeWithCoder(NSCoder&) const override { }
    NSRef<NSString> description() const override { return "(an object of a class that is not known here)"; }

protected:
    UnknownObject() = default;
    ~UnknownObject() override = default;
};

}

const NSClass& StandIns::classObject()
{
    static const NSClass& type = NSClass::define("StandIns", &NSObject::classObject(), {});
    return type;
}

StandIns::~StandIns() = default;

const NSClass* StandIns::unarchiverCannotDecodeObjectOfClassName(
    NSKeyedUnarchiver&, const NSRef<NSString>& name, const NSRef<NSArray>&)
{
    mUnknownClasses.insert(name->utf8());
    return &NSCoding::registerClass<UnknownObject>();
}

NSId decodeObject(const LUMDocumentBundle& bundle, const std::string& domain, const std::string& key,
    const NSRef<StandIns>& standIns, NSRef<NSError>* error)
{
    const auto path = bundle.pathForObjectWithKey(key, BundleContents::named(domain), false, error);
    const auto data = path ? NSData::dataWithContentsOfFile(path, error) : nullptr;
    if (!data)
        return nullptr;
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    unarchiver->setDelegate(standIns);
    NSId object = unarchiver->decodeObjectForKey("root");
    unarchiver->finishDecoding();
    return object;
}
