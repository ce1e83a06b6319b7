#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSSet.h"
#include "platform/archiving/collection_elements.h"
#include "platform/archiving/collection_filling.h"

#include <unordered_set>

/// The one class of their own that fuzzed archives may name. All nodes are known, so that graphs that lead
/// back into themselves can be cut.
class Node : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Node", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Node> initWithCoder(NSCoder& coder)
    {
        auto node = NSMake<Node>();
        all().push_back(node);
        coder.announceObject(node);
        if (coder.allowsKeyedCoding()) {
            node->mName = coder.decodeObjectForKey("name");
            node->mNext = coder.decodeObjectForKey("next");
        } else
            coder.decodeValuesOfObjCTypes(node->mName, node->mNext);
        return node;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        if (coder.allowsKeyedCoding()) {
            coder.encodeObjectForKey(mName, "name");
            coder.encodeObjectForKey(mNext, "next");
        } else
            coder.encodeValuesOfObjCTypes(mName, mNext);
    }

    /// Cuts all nodes off, and all collections that `root` or a node leads to.
    static void cutAll(const NSId& root)
    {
        std::vector<NSId> reached { root };
        for (const NSRef<Node>& node : all()) {
            reached.push_back(std::exchange(node->mName, nullptr));
            reached.push_back(std::exchange(node->mNext, nullptr));
        }
        all().clear();
        std::unordered_set<NSObject*> seen;
        for (std::size_t at = 0; at < reached.size(); ++at) {
            const NSId object = reached[at];
            if (!object || !seen.insert(object.get()).second)
                continue;
            const platform::ClassCoding* coding = platform::classCoding(object->isa());
            if (!coding || coding->kind < platform::CodedKind::Array)
                continue;
            for (NSId& element : platform::elementsOf(*object, coding->kind))
                reached.push_back(std::move(element));
            platform::emptyCollection(*object);
        }
    }

protected:
    Node() = default;
    ~Node() override = default;

private:
    static std::vector<NSRef<Node>>& all()
    {
        static std::vector<NSRef<Node>> nodes;
        return nodes;
    }

    NSId mName;
    NSId mNext;
};
