#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// What the property lists of the benchmarks hold: a library of tracks, the same for all who write it.
struct TrackRecord {
    std::int64_t identifier;
    std::string title;
    std::string artist; // one of a few hundred
    double rating;
    double added; // seconds since 2001
    bool isPlayed;
    std::array<std::string, 3> tags;
    std::string art; // bytes
};

inline std::vector<TrackRecord> trackRecords(std::int64_t binarySize)
{
    constexpr std::int64_t kRecordSize = 130; // about, in binary
    std::mt19937 random(1);
    const auto word = [&](unsigned long length) {
        std::string text;
        while (text.size() < length)
            text += static_cast<char>('a' + random() % 26);
        return text;
    };
    std::vector<std::string> artists(300);
    for (std::string& artist : artists)
        artist = word(4 + random() % 10) + " " + word(3 + random() % 10);
    const std::array<std::string, 8> tags { "rock", "live", "new", "mono", "jazz", "slow", "loud", "late" };
    std::vector<TrackRecord> records(static_cast<std::size_t>(binarySize / kRecordSize + 1));
    std::int64_t identifier = 0;
    for (TrackRecord& record : records) {
        record.identifier = ++identifier;
        record.title = word(5 + random() % 20);
        if (random() % 10 == 0)
            record.title += " \u00e9t\u00e9 & <more>";
        record.artist = artists[random() % artists.size()];
        record.rating = static_cast<double>(random() % 1000) / 100;
        record.added = static_cast<double>(random() % 700'000'000);
        record.isPlayed = random() % 2 == 0;
        for (std::string& tag : record.tags)
            tag = tags[random() % tags.size()];
        record.art = word(24);
    }
    return records;
}
