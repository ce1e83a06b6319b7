#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

NSId NSBoxing<NSObject>::box(const char* utf8)
{
    return NSRef<NSString>(utf8);
}

NSId NSBoxing<NSObject>::box(std::string_view utf8)
{
    return NSRef<NSString>(utf8);
}

NSId NSBoxing<NSObject>::box(std::u16string_view characters)
{
    return NSRef<NSString>(characters);
}

template<NSNumeric T> NSId NSBoxing<NSObject>::box(T value)
{
    return NSRef<NSNumber>(value);
}

template NS_EXPORT NSId NSBoxing<NSObject>::box(bool);
template NS_EXPORT NSId NSBoxing<NSObject>::box(char);
template NS_EXPORT NSId NSBoxing<NSObject>::box(signed char);
template NS_EXPORT NSId NSBoxing<NSObject>::box(unsigned char);
template NS_EXPORT NSId NSBoxing<NSObject>::box(short);
template NS_EXPORT NSId NSBoxing<NSObject>::box(unsigned short);
template NS_EXPORT NSId NSBoxing<NSObject>::box(int);
template NS_EXPORT NSId NSBoxing<NSObject>::box(unsigned);
template NS_EXPORT NSId NSBoxing<NSObject>::box(long);
template NS_EXPORT NSId NSBoxing<NSObject>::box(unsigned long);
template NS_EXPORT NSId NSBoxing<NSObject>::box(long long);
template NS_EXPORT NSId NSBoxing<NSObject>::box(unsigned long long);
template NS_EXPORT NSId NSBoxing<NSObject>::box(float);
template NS_EXPORT NSId NSBoxing<NSObject>::box(double);
