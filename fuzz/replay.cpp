// velum_replay TARGET PATH...: runs a target over files, and over all files in folders. It names each before, so the
// last is the one that a failure is about.

#include "support/sanitized.hpp"
#include "targets.hpp"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <sys/resource.h>

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
    // What promises too much must be refused on any machine; the sanitizers see to it themselves.
    if (rlimit const enough{rlim_t{4} << 30U, rlim_t{4} << 30U}; !support::sanitized) {
        setrlimit(RLIMIT_AS, &enough);
    }
    int files = 0;
    for (int i = 2; i < argc; ++i) {
        files += run_all(*target, argv[i]);
    }
    std::cout << files << " files\n";
    return files != 0 ? 0 : 1;
}
