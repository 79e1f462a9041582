// Runs every file of the folders named through a fuzz target, for machines without a fuzzer.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** folders) {
    int inputs = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(folders[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
            // A block of exactly the input's size, so that a sanitizer sees every read behind it.
            const auto block = std::make_unique<std::uint8_t[]>(bytes.size());
            std::copy(bytes.begin(), bytes.end(), block.get());
            std::fprintf(stderr, "%s\n", entry.path().string().c_str());
            LLVMFuzzerTestOneInput(block.get(), bytes.size());
            ++inputs;
        }
    }
    std::fprintf(stderr, "%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
