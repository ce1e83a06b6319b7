#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"

/// A base for classes derived from LUMDocumentBundle: the class operations, called on such a class, make
/// objects of it.
///
///     class Song : public LUMDocumentBundleSubclass<Song> {
///     public:
///         static const NSClass& classObject();
///         NSRef<NSString> title() const;
///     };
///     NSRef<Song> song = Song::documentBundleWithPath("/home/me/Song.song", true);
///
/// `Base` is LUMDocumentBundle or a class derived from it. Each operation does what LUMDocumentBundle's of
/// its name does.
template<typename Self, typename Base = LUMDocumentBundle> class LUMDocumentBundleSubclass : public Base {
public:
    static NSRef<Self> initWithFileRef(const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithFileRef(fileRef, error) ? made : nullptr;
    }
    static NSRef<Self> initWithURL(const NSRef<NSURL>& url, bool create, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithURL(url, create, error) ? made : nullptr;
    }
    static NSRef<Self> initWithPath(const NSRef<NSString>& path, bool create, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithPath(path, create, error) ? made : nullptr;
    }
    static NSRef<Self> documentBundleWithURL(
        const NSRef<NSURL>& url, bool create, NSRef<NSError>* error = nullptr)
    {
        return initWithURL(url, create, error);
    }
    static NSRef<Self> documentBundleWithPath(
        const NSRef<NSString>& path, bool create, NSRef<NSError>* error = nullptr)
    {
        return initWithPath(path, create, error);
    }
    static NSRef<Self> documentBundleWithFileRef(
        const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error = nullptr)
    {
        return initWithFileRef(fileRef, error);
    }

protected:
    using Base::Base;
    ~LUMDocumentBundleSubclass() override = default;

private:
    static LUMDocumentBundle& base(const NSRef<Self>& made) { return *made; }
};
