// velum_seeds FOLDER: writes what the fuzzers begin with, a folder for each target and a dictionary.
// velum_seeds --golden FOLDER: writes the golden files of the tests.

#include "support/golden.hpp"
#include "targets.hpp"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace support;
namespace fs = std::filesystem;

void put(fs::path const& path, std::string const& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream file;
    file.exceptions(std::ios::badbit | std::ios::failbit);
    file.open(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::string> identifier_texts() {
    std::string const text = velum::iid_unknown.string();
    return {text,       text.substr(1, 36), "f39ece853af5444c857e337c7401a53f", "{f39ece853af5444c857e337c7401a53f}",
            text + "}", text.substr(0, 20)};
}

// A command and its three arguments, as the target `operations` takes them.
std::vector<std::string> programs() {
    std::vector<std::string> all;
    for (char kind = 0; kind < 5; ++kind) {
        for (char command = 0; command < 12; ++command) {
            all.push_back({0, 0, 2, kind, 1, 1, 0, 1, 5, 1, 0, 1, command, 1, 0, kind, 10, 3, 1, 0, 2, 4, 1, 4});
        }
    }
    return all;
}

void put_all(fs::path const& folder, std::vector<std::string> const& inputs) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        put(folder / std::to_string(i), inputs[i]);
    }
}

void put_seeds(fs::path const& folder) {
    std::vector<std::string> maps, pairs, objects;
    for (golden const& file : goldens()) {
        (file.objects != 0 ? objects : maps).push_back(file.bytes);
    }
    for (std::size_t i = 0; i < maps.size(); ++i) {
        pairs.push_back(maps[i] + maps[i]);
        pairs.push_back(maps[i] + maps[(i + 1) % maps.size()]);
    }
    for (char const* const target : {"values_by_stream", "values_by_serializer", "value_round_trip", "routes"}) {
        put_all(folder / target, maps);
    }
    for (char const* const target : {"objects", "object_round_trip"}) {
        put_all(folder / target, objects);
    }
    put_all(folder / "compare", pairs);
    std::vector<std::string> both = maps;
    both.insert(both.end(), objects.begin(), objects.end());
    put_all(folder / "inspected", both);
    put_all(folder / "identifiers", identifier_texts());
    put_all(folder / "operations", programs());
}

std::string dictionary() {
    std::vector<std::string> words{u32(0x10000), u32(0xFFFFFFFF), u32(0x1000000), "{", "}-"};
    for (golden const& file : goldens()) {
        if (file.tag != 0) {
            words.push_back(u32(static_cast<std::uint32_t>(file.tag)));
        }
    }
    auto const factory = node_factory();
    for (velum::guid_t const& clsid : factory->registered_classes()) {
        words.push_back(stored(clsid));
    }
    std::string text;
    for (std::string const& word : words) {
        text += '"';
        for (char const c : word) {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            text += escaped;
        }
        text += "\"\n";
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    bool const wants_golden = argc == 3 && argv[1] == std::string("--golden");
    if (argc != (wants_golden ? 3 : 2)) {
        std::cerr << "usage: velum_seeds [--golden] FOLDER\n";
        return 2;
    }
    fs::path const folder = argv[argc - 1];
    if (!wants_golden) {
        put_seeds(folder);
        put(folder / "dictionary", dictionary());
        return 0;
    }
    for (golden const& file : goldens()) {
        put(folder / file.name, file.bytes);
    }
    return 0;
}
