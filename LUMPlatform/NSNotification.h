#pragma once

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

/// What a notification centre tells its observers: a name, the object it is about, and more in a dictionary.
///
/// It keeps all three alive. Immutable. Threads: any.
///
///     auto notification = NSNotification::notificationWithName("TrackDidEnd", track, info);
class NS_EXPORT NSNotification : public NSObject {
public:
    static const NSClass& classObject();

    /// Raises NSInvalidArgumentException for a null name; the others may be null.
    /// Selector: notificationWithName:object:userInfo:
    static NSRef<NSNotification> notificationWithName(const NSRef<NSString>& name,
        const NSId& object = nullptr, const NSRef<NSDictionary>& userInfo = nullptr);

    NSRef<NSString> name() const { return mName; } ///< Selector: name
    NSId object() const { return mObject; } ///< Selector: object
    NSRef<NSDictionary> userInfo() const { return mUserInfo; } ///< Selector: userInfo

    /// Equal names and userInfo, and the same object.
    /// Selector: isEqual:
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSRef<NSString> description() const override;
    NSId copy() const override;

protected:
    NSNotification(const NSRef<NSString>& name, const NSId& object, const NSRef<NSDictionary>& userInfo);
    ~NSNotification() override;

private:
    friend class NSNotificationCenter;

    const NSRef<NSString> mName;
    const NSId mObject;
    const NSRef<NSDictionary> mUserInfo;
};
