#pragma once

#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSString.h"

/// A small class with a way to another of its kind, for the tests of archives of both layouts.
class Node : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Node", &NSObject::classObject(), NSCoding::methods());
        return type;
    }
    static NSRef<Node> named(const char* name, const NSRef<Node>& next = nullptr)
    {
        NSCoding::registerClass<Node>();
        auto node = NSMake<Node>();
        node->name = name;
        node->next = next;
        return node;
    }

    static NSRef<Node> initWithCoder(NSCoder& coder)
    {
        auto node = NSMake<Node>();
        coder.announceObject(node);
        if (coder.allowsKeyedCoding()) {
            node->name = coder.decodeObjectForKey<NSString>("name");
            node->next = coder.decodeObjectForKey("next");
        } else
            coder.decodeValuesOfObjCTypes(node->name, node->next);
        return node;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        if (coder.allowsKeyedCoding()) {
            coder.encodeObjectForKey(name, "name");
            coder.encodeObjectForKey(next, "next");
        } else
            coder.encodeValuesOfObjCTypes(name, next);
    }

    void undoDecoding() noexcept { next = nullptr; }

    NSRef<NSString> name;
    NSId next;

protected:
    Node() = default;
    ~Node() override = default;
};
