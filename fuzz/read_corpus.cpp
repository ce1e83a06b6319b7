// Stands in for libFuzzer: hands every file of the given folders to the fuzzer once, so that the corpus is a
// test.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    std::size_t count = 0;
    for (int i = 1; i < argc; i++) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
            if (!entry.is_regular_file())
                continue;
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout); // so that the name of a file that crashes is known
            std::ifstream file(entry.path(), std::ios::binary);
            std::vector<char> bytes { std::istreambuf_iterator<char>(file),
                std::istreambuf_iterator<char>() };
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            count++;
        }
    }
    return count > 0 ? 0 : 1; // an empty corpus tests nothing
}
