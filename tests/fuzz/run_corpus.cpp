// Runs each input of the given folders once: what libFuzzer does with -runs=0, for builds without
// it.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

void RunInput(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> text{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int count, char **arguments) {
    int inputs = 0;
    for (int i = 1; i < count; ++i) {
        if (arguments[i][0] == '-')
            continue; // an option of libFuzzer
        for (const auto &entry : std::filesystem::directory_iterator(arguments[i])) {
            RunInput(entry.path());
            ++inputs;
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1; // a corpus that has gone is no success
}
