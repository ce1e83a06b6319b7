// A graph of objects of one's own, written as a keyed archive and read again; and settings as a property
// list.

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"

#include <iostream>
#include <utility>

namespace {

/// A piece of music and the one after it, which may lead back to the first.
class Track : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Track", &NSObject::classObject(), NSCoding::methods());
        return type;
    }

    static NSRef<Track> initWithCoder(NSCoder& coder)
    {
        auto track = NSMake<Track>();
        coder.announceObject(track); // since the next one may lead back to this one
        track->title = coder.decodeObjectForKey<NSString>("title");
        track->seconds = coder.decodeDoubleForKey("seconds");
        track->next = coder.decodeObjectForKey<Track>("next");
        return track;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        coder.encodeObjectForKey(title, "title");
        coder.encodeDouble(seconds, "seconds");
        coder.encodeObjectForKey(next, "next");
    }

    void undoDecoding() noexcept { next = nullptr; } // for an archive that breaks off in a circle

    NSRef<NSString> title;
    double seconds = 0;
    NSRef<Track> next;
};

NSRef<Track> trackOf(const NSRef<NSString>& title, double seconds)
{
    auto track = NSMake<Track>();
    track->title = title;
    track->seconds = seconds;
    return track;
}

bool archiveAndReadAgain()
{
    NSCoding::registerClass<Track>(); // nothing but registered classes is ever made from an archive
    auto intro = trackOf("Intro", 12);
    intro->next = trackOf("Verse", 47.5);
    intro->next->next = intro;
    auto data = NSKeyedArchiver::archivedDataWithRootObject(intro);
    intro->next->next = nullptr; // nobody else ends what keeps itself alive

    auto again = NSCast<Track>(NSKeyedUnarchiver::unarchiveObjectWithData(data));
    std::cout << data->length() << " bytes: " << again->title << ", then " << again->next->title << ", then "
              << again->next->next->title << " again\n";
    return std::exchange(again->next->next, nullptr) == again;
}

bool refusesWhatIsCutOff(const NSRef<NSData>& data)
{
    try {
        auto half = data->subdataWithRange({ 0, data->length() / 2 });
        return !NSKeyedUnarchiver::unarchiveObjectWithData(half);
    } catch (const NSException& exception) {
        std::cout << "half of it: " << exception.what() << '\n';
        return true;
    }
}

bool writeSettings()
{
    auto settings = NSDictionary::of({ { "volume", 0.5 }, { "recent", NSArray::of("Intro", "Verse") } });
    NSRef<NSError> error;
    auto data =
        NSPropertyListSerialization::dataWithPropertyList(settings, NSPropertyListXMLFormat_v1_0, 0, &error);
    if (!data) {
        std::cerr << error << '\n';
        return false;
    }
    std::cout << NSString::initWithData(data, NSUTF8StringEncoding);
    return NSEqual(NSPropertyListSerialization::propertyListWithData(data), settings)
        && refusesWhatIsCutOff(NSKeyedArchiver::archivedDataWithRootObject(settings));
}

}

int main()
{
    return archiveAndReadAgain() && writeSettings() ? 0 : 1;
}
