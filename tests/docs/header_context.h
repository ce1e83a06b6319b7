#pragma once

// What the examples in the public headers take for granted: the names of a program around them. Each name
// stands for one thing in all headers. Nothing here is defined, since the examples are compiled and never
// run.

#include "LUMFoundation/LUMFoundation.h"

#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <iostream>
#include <mutex>
#include <string>

class Picture : public NSObject {
public:
    static const NSClass& classObject();
};

class Song : public NSObject {
public:
    static const NSClass& classObject();
};

class Track : public NSObject, public NSCoding {
public:
    static const NSClass& classObject();
    static NSRef<Track> initWithCoder(NSCoder& coder);
    void encodeWithCoder(NSCoder& coder) const override;
    void setTitle(const NSRef<NSString>& title);
    double measure() const;
    void show(double seconds);
};

class TemperatureFormatter : public NSFormatter {
public:
    NSRef<NSString> stringForObjectValue(const NSId& value) const override;
};

class DownloadDelegate : public NSProtocol {
public:
    virtual void downloadDidStart(NSObject& download) = 0;
};

struct Label {
    void setText(const NSRef<NSString>& text);
};

namespace Words {
NSRef<NSString> firstWord(const NSRef<NSString>& text);
}

using uchar = unsigned char;

struct QImage {
    enum Format { Format_RGBA8888 };
    QImage(const uchar* bytes, int width, int height, Format format);
};

struct QSocketNotifier {
    enum Type { Read };
    QSocketNotifier(int descriptor, Type type);
    void activated();
};

struct QObject {
    static void connect(
        QSocketNotifier* sender, void (QSocketNotifier::*signal)(), std::function<void()> call);
};

void copyFiles();
void edit(const NSId& settings);
OSStatus mountVolume();
NSRef<NSString> nameOf(const NSId& track);
void play(const NSRef<NSString>& path);
void saveSettings();
void startWork();
void use(const FSRef& item);

extern Label* label;
extern NSId a, b, browser, colour, importer, list, overseer, row, settings, view;
extern NSRef<LUMFileRef> folder, take;
extern NSRef<LUMJob> job;
extern NSRef<NSArray> array, names;
extern NSRef<NSData> data;
extern NSRef<NSDate> date;
extern NSRef<NSDictionary> info, table;
extern NSRef<NSError> error;
extern NSRef<NSFileManager> manager;
extern NSRef<NSKeyedUnarchiverDelegate> standIns;
extern NSRef<NSMutableArray> tracks;
extern NSRef<NSMutableDictionary> dictionary;
extern NSRef<NSNotificationCenter> center;
extern NSRef<NSString> name, path, text, title;
extern NSRef<Song> song;
extern NSRef<Track> track;
extern FSRef file;
extern NSSelector setTitle;
extern double bytesCopied, celsius;
extern int shared;
extern long long count;
