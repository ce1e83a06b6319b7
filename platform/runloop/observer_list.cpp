#include "platform/runloop/observer_list.h"

#include <algorithm>

namespace platform {

void ObserverList::add(std::shared_ptr<Observation> observation)
{
    if (!mBlock || mBlock->size() == mBlock->capacity())
        rewrite(2 * mCount + 1);
    mBlock->push_back(std::move(observation));
    ++mCount;
}

void ObserverList::didRemoveOne()
{
    constexpr std::size_t kFew = 8;
    --mCount;
    if (mBlock->size() > 2 * mCount + kFew)
        rewrite(mCount);
}

void ObserverList::rewrite(std::size_t capacity)
{
    auto block = std::make_shared<Block>();
    block->reserve(capacity);
    if (mBlock)
        std::copy_if(mBlock->begin(), mBlock->end(), std::back_inserter(*block),
            [](const auto& observation) { return !observation->isRemoved; });
    mBlock = std::move(block);
}

}
