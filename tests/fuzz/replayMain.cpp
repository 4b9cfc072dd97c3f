// Runs a fuzz target on files and on all files of folders, each once, without libFuzzer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& place)
{
    if (!fs::is_directory(place))
        return {place};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(place))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& file)
{
    // Flushed first: when the target crashes, the last line says on what.
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream)
        return false;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int count, char** places)
{
    int replayed = 0;
    for (int i = 1; i < count; ++i)
        for (const fs::path& file : filesIn(places[i]))
            replayed += replay(file) ? 1 : 0;
    std::printf("%d inputs\n", replayed);
    return replayed == 0 ? 1 : 0;
}
