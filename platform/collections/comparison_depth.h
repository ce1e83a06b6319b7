#pragma once

namespace platform {

/// Held while a collection compares its elements. Raises NSInvalidArgumentException past a depth that no
/// honest nesting has: collections that contain themselves would be compared without end.
class ComparisonDepth {
public:
    static constexpr int kMax = 2000;

    ComparisonDepth();
    ~ComparisonDepth();
    ComparisonDepth(const ComparisonDepth&) = delete;
    ComparisonDepth& operator=(const ComparisonDepth&) = delete;
};

}
