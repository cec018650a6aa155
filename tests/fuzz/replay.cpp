#include "tests/fuzz/fuzz.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{

/// The number of fits that an input reaches.
int replay(const std::filesystem::path& input)
{
    std::printf("%s", input.filename().c_str());
    std::fflush(stdout); // a trap must not swallow the name
    std::ifstream file(input, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    fuzz::fits = 0;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    std::printf(" %d\n", fuzz::fits);
    return fuzz::fits;
}

} // namespace

/// [--fits] SEEDS REGRESSIONS: runs a fuzz target once over every file of both folders, without a fuzzer. With --fits
/// it fails if a seed reaches no fit, which happens when the target's layout has changed.
int main(int argc, char** argv)
{
    const bool mustFit = argc > 1 && std::string_view(argv[1]) == "--fits";
    const int seeds = mustFit ? 2 : 1;
    int count = 0, idle = 0;
    for (int i = seeds; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            const int fits = replay(entry.path());
            idle += mustFit && i == seeds && fits == 0;
            ++count;
        }
    }
    std::printf("%d inputs, %d seeds without a fit\n", count, idle);
    return count > 0 && idle == 0 ? 0 : 1;
}
