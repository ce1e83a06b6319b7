// Tells what happens to the paths given, until Ctrl-C; without arguments, to a file that it makes, changes
// and removes.

#include "LUMFoundation/OVKQueue.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSRunLoop.h"
#include "LUMPlatform/NSString.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <unistd.h>

namespace {

/// The delegate of the watcher; hears everything on the main thread.
class Reporter : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"watcher:receivedNotification:forPath:", &Reporter::watcherReceivedNotification>(),
        };
        static const NSClass& type = NSClass::define("Reporter", &NSObject::classObject(), kMethods);
        return type;
    }

    void watcherReceivedNotification(const NSId&, const NSRef<NSString>& name, const NSRef<NSString>& path)
    {
        std::cout << path << ": " << name << std::endl;
        if (whenTold)
            whenTold(name);
    }

    std::function<void(const NSRef<NSString>& name)> whenTold;
};

}

int main(int argc, char** argv)
{
    auto watcher = OVKQueue::init();
    if (!watcher) {
        std::cerr << "the system has no more event queues\n";
        return 1;
    }
    auto reporter = NSMake<Reporter>();
    watcher->setDelegate(reporter); // not owned by the watcher

    for (int word = 1; word < argc; ++word)
        watcher->addPath(argv[word]);
    if (argc > 1) {
        NSRunLoop::main()->run();
        return 0;
    }

    const std::string path =
        (std::filesystem::temp_directory_path() / ("watched-" + std::to_string(getpid()))).string();
    std::ofstream file(path);
    watcher->addPath(path);
    reporter->whenTold = [&](const NSRef<NSString>& name) {
        if (name->isEqualToString(OVFileWatcherWriteNotification))
            std::filesystem::remove(path);
        else if (name->isEqualToString(OVFileWatcherDeleteNotification))
            NSRunLoop::main()->stop();
    };
    file << "something\n";
    file.close();
    NSRunLoop::main()->run();
    return 0;
}
