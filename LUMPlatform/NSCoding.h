#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSCoder.h"

#include <concepts>
#include <span>

/// How the objects of one class go into archives and come out of them; what NSCoding::registerClass makes.
struct NSClassCoding {
    void (*encode)(const NSObject& object, NSCoder& coder);
    NSId (*make)(NSCoder& coder);
};

/// Declared by objects that can be archived: they write what they are made of, and their class makes new
/// objects from it.
///
/// An archive names classes, and nothing but a registered class is ever made from one, so what a foreign
/// archive can bring to life is known. Strings, numbers, dates, data, collections and null are registered; a
/// class of your own is by registerClass, once, before it is archived or read. Each class that is archived is
/// registered for itself: a subclass with a class object of its own is not, just because its base is.
///
///     class Track : public NSObject, public NSCoding {
///     public:
///         static const NSClass& classObject();
///         static NSRef<Track> initWithCoder(NSCoder& coder);
///         void encodeWithCoder(NSCoder& coder) const override;
///         void undoDecoding() noexcept { mNext = nullptr; } // needed for announceObject
///
///     private:
///         NSRef<NSString> mTitle;
///         NSRef<Track> mNext;
///     };
///     void Track::encodeWithCoder(NSCoder& coder) const
///     {
///         coder.encodeObjectForKey(mTitle, "title");
///         coder.encodeObjectForKey(mNext, "next");
///     }
///     NSRef<Track> Track::initWithCoder(NSCoder& coder)
///     {
///         auto track = NSMake<Track>();
///         coder.announceObject(track); // since the next one may lead back to this one
///         track->mTitle = coder.decodeObjectForKey<NSString>("title");
///         track->mNext = coder.decodeObjectForKey<Track>("next");
///         return track;
///     }
///
/// and where the program begins:
///
///     NSCoding::registerClass<Track>();
class NS_EXPORT NSCoding : public NSProtocol {
public:
    /// Writes what initWithCoder reads. It may be called several times, and changes nothing.
    /// Selector: encodeWithCoder:
    virtual void encodeWithCoder(NSCoder& coder) const = 0;

    /// Lets objects of class T be archived and made. T has a static function `initWithCoder(NSCoder&)` that
    /// answers a new object, or null when there is none to make. Again is harmless. Threads: any.
    template<typename T> static const NSClass& registerClass()
    {
        static_assert(std::derived_from<T, NSCoding>, "the class declares NSCoding");
        const NSClass& type = T::classObject();
        registerClassCoding(type,
            { [](const NSObject& object, NSCoder& coder) {
                 static_cast<const T&>(object).encodeWithCoder(coder);
             },
                [](NSCoder& coder) { return NSId(T::initWithCoder(coder)); } });
        return type;
    }
    /// The same for a class that does not declare NSCoding itself.
    static void registerClassCoding(const NSClass& type, const NSClassCoding& coding);

    /// The table of encodeWithCoder:, for NSClass::define or NSClass::extend of a class that is to answer it
    /// in dynamic calls as well.
    static std::span<const NSMethod> methods();

protected:
    ~NSCoding() override = default;
};
