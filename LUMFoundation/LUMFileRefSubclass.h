#pragma once

#include "LUMFoundation/LUMFileRef.h"

/// A base for classes derived from LUMFileRef: the class operations, called on such a class, make objects of
/// it.
///
///     class Take : public LUMFileRefSubclass<Take> {
///     public:
///         static const NSClass& classObject();
///         double seconds() const;
///     };
///     NSRef<Take> take = Take::fileRefWithPath("/Takes/Take 1.aif");
///
/// To be archived or copied it is registered: NSCoding::registerClass<Take>(). `Base` is LUMFileRef or a
/// class derived from it. Each operation does what LUMFileRef's of its name does.
template<typename Self, typename Base = LUMFileRef> class LUMFileRefSubclass : public Base {
public:
    static NSRef<Self> fileRefWithPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr)
    {
        return initWithPathResolveAlias(path, true, error);
    }
    static NSRef<Self> fileRefWithPathResolveAlias(
        const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error = nullptr)
    {
        return initWithPathResolveAlias(path, resolveAlias, error);
    }
    static NSRef<Self> fileRefWithFSRef(const FSRef& ref, NSRef<NSError>* error = nullptr)
    {
        return initWithFSRefResolveAlias(ref, true, error);
    }
    static NSRef<Self> fileRefWithFSRefResolveAlias(
        const FSRef& ref, bool resolveAlias, NSRef<NSError>* error = nullptr)
    {
        return initWithFSRefResolveAlias(ref, resolveAlias, error);
    }
    static NSRef<Self> fileRefWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error = nullptr)
    {
        return initWithURL(url, error);
    }

    static NSRef<Self> initWithFSRef(const FSRef& ref, NSRef<NSError>* error = nullptr)
    {
        return initWithFSRefResolveAlias(ref, true, error);
    }
    static NSRef<Self> initWithFSRefResolveAlias(
        const FSRef& ref, bool resolveAlias, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithFSRef(ref, resolveAlias, error) ? made : nullptr;
    }
    static NSRef<Self> initWithPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr)
    {
        return initWithPathResolveAlias(path, true, error);
    }
    static NSRef<Self> initWithPathResolveAlias(
        const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithPath(path, resolveAlias, error) ? made : nullptr;
    }
    static NSRef<Self> initWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error = nullptr)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithURL(url, error) ? made : nullptr;
    }
    static NSRef<Self> initWithCoder(NSCoder& coder)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithCoder(coder) ? made : nullptr;
    }

    [[deprecated("archive the handle instead")]] static NSRef<Self> fileRefWithAliasData(
        const NSRef<NSData>& data, NSRef<NSError>* error = nullptr)
    {
        return makeWithAliasData(data, error);
    }
    [[deprecated("archive the handle instead")]] static NSRef<Self> initWithAliasData(
        const NSRef<NSData>& data, NSRef<NSError>* error = nullptr)
    {
        return makeWithAliasData(data, error);
    }

protected:
    using Base::Base;
    ~LUMFileRefSubclass() override = default;

private:
    friend class LUMFileRef;

    static NSRef<Self> makeWithAliasData(const NSRef<NSData>& data, NSRef<NSError>* error)
    {
        auto made = NSMake<Self>();
        return base(made).setUpWithAliasData(data, error) ? made : nullptr;
    }
    static LUMFileRef& base(const NSRef<Self>& made) { return *made; }
};
