// A program outside the tree that uses what is installed: it derives a class, sends to it by name, and
// catches across the border of the library.
#include <LUMFoundation/LUMFoundation.h>

#include <cstdio>

namespace {

class Track : public NSObject {
public:
    static const NSClass& classObject();
    NSRef<NSString> title() const { return "Take 1.aif"; }

protected:
    ~Track() override = default;
};

constexpr NSMethod kMethods[] = { NSMethodOf<"title", &Track::title>() };

const NSClass& Track::classObject()
{
    static const NSClass& type = NSClass::define("Track", &NSObject::classObject(), kMethods);
    return type;
}

}

int main()
{
    auto title = NSSend<NSRef<NSString>>(NSMake<Track>(), NSSelector("title"));
    if (title->substringToIndex(6)->utf8() != "Take 1")
        return 1;
    try {
        (void)title->characterAtIndex(10);
        return 2;
    } catch (const NSException& exception) {
        if (!exception.name()->isEqualToString(NSRangeException))
            return 3;
    }
    auto reporter = LUMRateReporter::initWithTimeWindow(5);
    reporter->addSample(1);
    if (reporter->rate() != 0)
        return 4;
    std::puts("the consumer works");
}
