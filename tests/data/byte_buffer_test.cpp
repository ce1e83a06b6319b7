#include "data/byte_buffer.h"

#include "tests/data/hex.h"
#include "tests/data/refusing_memory.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using lum::ByteBuffer;

ByteBuffer bufferOf(std::string_view digits, lum::Reallocate reallocate = std::realloc)
{
    std::vector<std::byte> bytes = unhex(digits);
    ByteBuffer buffer(reallocate);
    EXPECT_TRUE(buffer.grow(bytes.size()));
    std::ranges::copy(bytes, buffer.data());
    return buffer;
}

TEST(ByteBufferTest, KeepsItsBytesWhenItGrows)
{
    ByteBuffer buffer = bufferOf("01 02 03");
    ASSERT_TRUE(buffer.grow(1 << 20));
    EXPECT_EQ(buffer.size(), 1048576u);
    EXPECT_EQ(hex(buffer.bytes().first(3)), "01 02 03");
}

TEST(ByteBufferTest, LosesTheEndWhenItIsCut)
{
    ByteBuffer buffer = bufferOf("01 02 03");
    buffer.cut(2);
    EXPECT_EQ(hex(buffer.bytes()), "01 02");
}

TEST(ByteBufferTest, GivesSpareRoomBackWhenThereIsMuch)
{
    static std::size_t last;
    ByteBuffer buffer([](void* block, std::size_t size) {
        last = size;
        return std::realloc(block, size);
    });
    ASSERT_TRUE(buffer.grow(1000));
    buffer.cut(900);
    EXPECT_EQ(last, 1000u);
    buffer.cut(800);
    EXPECT_EQ(last, 800u);
    EXPECT_EQ(buffer.size(), 800u);
}

TEST(ByteBufferTest, HasABlockEvenForNoBytes)
{
    ByteBuffer buffer;
    ASSERT_TRUE(buffer.grow(0));
    EXPECT_NE(buffer.data(), nullptr);
    EXPECT_EQ(buffer.size(), 0u);
}

TEST(ByteBufferTest, StaysAsItIsWhenThereIsNoMemoryToGrow)
{
    RefusingMemory memory(1);
    ByteBuffer buffer = bufferOf("01 02 03", RefusingMemory::reallocate);
    EXPECT_FALSE(buffer.grow(4));
    EXPECT_EQ(hex(buffer.bytes()), "01 02 03");
}

TEST(ByteBufferTest, IsCutEvenWhenThereIsNoMemory)
{
    RefusingMemory memory(1);
    ByteBuffer buffer = bufferOf("01 02 03", RefusingMemory::reallocate);
    buffer.cut(1);
    EXPECT_EQ(hex(buffer.bytes()), "01");
}

TEST(ByteBufferTest, GrowsJustAsFarAsNeededWhenThereIsNoMemoryForSpareRoom)
{
    static bool generous;
    generous = false;
    ByteBuffer buffer([](void* block, std::size_t size) -> void* {
        generous |= size == 150;
        return size == 150 ? nullptr : std::realloc(block, size);
    });
    ASSERT_TRUE(buffer.grow(100));
    EXPECT_TRUE(buffer.grow(101));
    EXPECT_TRUE(generous);
    EXPECT_EQ(buffer.size(), 101u);
}

TEST(ByteBufferTest, TakesFewBlocksForManySteps)
{
    static int blocks;
    blocks = 0;
    ByteBuffer buffer([](void* block, std::size_t size) {
        ++blocks;
        return std::realloc(block, size);
    });
    for (std::size_t size = 1000; size <= 1000000; size += 10)
        ASSERT_TRUE(buffer.grow(size));
    EXPECT_EQ(blocks, 19);
}

TEST(ByteBufferTest, CannotBeginWithoutMemory)
{
    RefusingMemory memory(0);
    ByteBuffer buffer(RefusingMemory::reallocate);
    EXPECT_FALSE(buffer.grow(0));
}

TEST(ByteBufferTest, GivesItsBlockAway)
{
    ByteBuffer buffer = bufferOf("07");
    std::byte* block = buffer.leak();
    EXPECT_EQ(*block, std::byte(7));
    EXPECT_EQ(buffer.size(), 0u);
    std::free(block);
}

TEST(ByteBufferTest, MovesItsBlock)
{
    ByteBuffer from = bufferOf("07");
    ByteBuffer to = bufferOf("08 09");
    to = std::move(from);
    EXPECT_EQ(hex(to.bytes()), "07");
}

}
