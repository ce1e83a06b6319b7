#pragma once

#include "platform/archiving/collection_elements.h"
#include "platform/archiving/collection_filling.h"
#include "tests/platform/archiving/node.h"

#include <unordered_set>

/// Cuts all that `root` leads to apart, so that a graph that leads back into itself ends.
inline void cutGraph(const NSId& root)
{
    std::vector<NSId> reached { root };
    std::unordered_set<NSObject*> seen;
    for (std::size_t at = 0; at < reached.size(); ++at) {
        const NSId object = reached[at];
        if (!object || !seen.insert(object.get()).second)
            continue;
        if (auto* node = NSDowncast<Node>(object.get())) {
            reached.push_back(node->next);
            node->undoDecoding();
            continue;
        }
        const platform::ClassCoding* coding = platform::classCoding(object->isa());
        if (!coding || coding->kind < platform::CodedKind::Array)
            continue;
        for (NSId& element : platform::elementsOf(*object, coding->kind))
            reached.push_back(std::move(element));
        platform::emptyCollection(*object);
    }
}
