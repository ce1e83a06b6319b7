#include "examples/incoming/options.h"

#include <charconv>
#include <string_view>

const char* const kUsage =
    "incoming [FOLDER] [--into DIR] [--jobs N] [--count N]\n"
    "\n"
    "Watches a drop folder. Each file that is complete there (NAME.complete; NAME.partial while it\n"
    "is being written) is compressed, digested, checked, and moved out to DIR/originals. What is made\n"
    "of it is kept in the document DIR/incoming.bundle: the compressed file, and a record that finds the\n"
    "original wherever it goes. At the end the folder of originals gets a name of its own. Without FOLDER\n"
    "it makes one and has a second process copy files into it.\n"
    "\n"
    "  --into DIR   where results go (default: FOLDER with \"-done\" behind it)\n"
    "  --jobs N     files at a time, up to 1000 (default: one a processor)\n"
    "  --count N    end after N files (default: never with FOLDER, 240 without)\n";

namespace {

constexpr std::size_t kMostJobs = 1'000;
constexpr std::size_t kMostFiles = 1'000'000'000;

bool parseNumber(std::string_view text, std::size_t most, std::size_t& number)
{
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number > 0 && number <= most;
}

/// "drop/", as shells complete it, is the folder "drop".
std::string withoutLastSlashes(std::string_view path)
{
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return std::string(path);
}

}

std::optional<Options> parseOptions(std::span<char* const> words, std::string& problem)
{
    Options options;
    for (std::size_t at = 0; at < words.size(); ++at) {
        std::string_view word = words[at];
        if (word == "--help" || word == "-h") {
            options.help = true;
            return options;
        }
        if (!word.starts_with("-")) {
            if (!options.folder.empty()) {
                problem = "one folder only, please";
                return std::nullopt;
            }
            options.folder = withoutLastSlashes(word);
            continue;
        }
        if (word != "--into" && word != "--jobs" && word != "--count") {
            problem = "no such option: " + std::string(word);
            return std::nullopt;
        }
        std::string_view value = at + 1 < words.size() ? words[++at] : "";
        std::size_t number = 0;
        const std::size_t most = word == "--jobs" ? kMostJobs : kMostFiles;
        if (word == "--into" ? value.empty() : !parseNumber(value, most, number)) {
            problem = std::string(word)
                + (word == "--into" ? " takes a folder"
                                    : " takes a number from 1 to " + std::to_string(most));
            return std::nullopt;
        }
        if (word == "--into")
            options.into = value;
        else
            (word == "--jobs" ? options.jobs : options.count) = number;
    }
    return options;
}
