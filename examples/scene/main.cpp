// How a program keeps its document in velum: it has classes of its own (mesh.cpp, node.cpp) and takes what the library
// has (make_document.cpp), stores the graph with one call and reads it with another (files.cpp), and looks at what it
// gets before it relies on it (check_document.cpp).

#include "comparison.hpp"
#include "files.hpp"
#include "make_document.hpp"
#include "model.hpp"
#include "text.hpp"
#include "tree.hpp"

#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr char const* usage = "usage: scene [MODEL.obj [OUT.velum]] | scene show FILE.velum | scene --help";

constexpr char const* help = R"(
scene [MODEL.obj [OUT.velum]]  reads a Wavefront OBJ model, stores it as a graph of objects, reads it back, and prints it
scene show FILE.velum          prints what a stored file holds

Without a model it takes a small one of its own. OUT.velum is the model's name in the current folder by default.
)";

struct usage_error {};

template <class Work>
double milliseconds(Work work) {
    auto const start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

fs::path own_model() {
    fs::path const beside_source = SCENE_MODEL;
    std::error_code error;
    fs::path const program = fs::read_symlink("/proc/self/exe", error);
    return fs::exists(beside_source, error) ? beside_source
                                            : program.parent_path() / "model" / beside_source.filename();
}

void print_notes(scene::model const& model) {
    std::size_t count = 0;
    for (std::string const& note : model.notes) {
        if (++count > 5) {
            std::cerr << "scene: note: and " << model.notes.size() - 5 << " more\n";
            return;
        }
        std::cerr << "scene: note: " << scene::printable(note, 500) << '\n';
    }
}

void store(fs::path const& model_file, fs::path const& out) {
    std::error_code error;
    if (fs::equivalent(model_file, out, error)) {
        throw std::runtime_error(out.string() + ": would be written over the model");
    }
    scene::model model;
    double const loaded = milliseconds([&] { model = scene::load_model(model_file); });
    auto const document = scene::make_document(model);
    double const written = milliseconds([&] { scene::save(out, document); });
    velum::iptr<velum::i_unknown_map_t> copy;
    double const read = milliseconds([&] { copy = scene::load(out); });

    scene::comparison const compared = scene::compare(document, copy);
    if (!compared.same) {
        throw std::runtime_error(out.string() + ": what was read differs from what was written at " +
                                 compared.difference);
    }
    scene::print_tree(std::cout, out.string(), copy);
    std::cout << fs::file_size(out) << " bytes; all " << compared.objects << " objects and " << compared.values
              << " values came back as they were\n"
              << std::fixed << std::setprecision(2) << "model loaded in " << loaded << " ms, document written in "
              << written << " ms, read in " << read << " ms\n";
    print_notes(model);
}

void show(fs::path const& file) {
    auto const document = scene::load(file);
    scene::print_tree(std::cout, file.string(), document);
}

void run(std::vector<std::string> const& arguments) {
    bool const is_show = !arguments.empty() && arguments[0] == "show";
    bool const has_option = !arguments.empty() && arguments[0].starts_with('-');
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::cout << usage << '\n' << help;
    } else if (is_show && arguments.size() == 2) {
        show(arguments[1]);
    } else if (is_show || has_option || arguments.size() > 2) {
        throw usage_error();
    } else {
        fs::path const model = arguments.empty() ? own_model() : fs::path(arguments[0]);
        store(model, arguments.size() == 2 ? fs::path(arguments[1]) : fs::path(model.stem()) += ".velum");
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output: can't be written");
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return 0;
    } catch (usage_error const&) {
        std::cerr << usage << '\n';
        return 2;
    } catch (std::exception const& failure) {
        std::cerr << "scene: " << scene::printable(failure.what(), 2000) << '\n';
        return 1;
    }
}
