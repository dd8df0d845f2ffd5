// velum_replay TARGET PATH...: runs a target over files, and over all files in folders. It names each before, so the
// last is the one that a failure is about.

#include "support/memory_limit.hpp"
#include "targets.hpp"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

void run(fuzz::target const& target, fs::path const& path) {
    std::ifstream file(path, std::ios::binary);
    file.exceptions(std::ios::badbit | std::ios::failbit);
    std::cout << path.string() << std::endl;
    target.run({std::istreambuf_iterator<char>(file), {}});
}

int run_all(fuzz::target const& target, fs::path const& path) {
    if (!fs::is_directory(path)) {
        return run(target, path), 1;
    }
    int files = 0;
    for (auto const& entry : fs::directory_iterator(path)) {
        files += run_all(target, entry.path());
    }
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    fuzz::target const* const target = argc > 2 ? fuzz::find_target(argv[1]) : nullptr;
    if (target == nullptr) {
        std::cerr << "usage: velum_replay TARGET PATH...\n";
        return 2;
    }
    support::memory_limit const enough(4096 * support::mebibyte);  // what promises too much is refused on any machine
    int files = 0;
    for (int i = 2; i < argc; ++i) {
        files += run_all(*target, argv[i]);
    }
    std::cout << files << " files\n";
    return files != 0 ? 0 : 1;
}
