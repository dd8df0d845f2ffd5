// How a program keeps its document in velum: it has classes of its own (mesh.cpp, node.cpp) and takes what the library
// has (make_document.cpp) or a module brings (note.cpp), stores the graph with one call and reads it with another
// (files.cpp), looks at what it gets before it relies on it (check_document.cpp), compares documents (description.cpp),
// and edits them by commands that can be undone (edits.cpp, edit_history.cpp).

#include "classes.hpp"
#include "description.hpp"
#include "files.hpp"
#include "make_document.hpp"
#include "model.hpp"
#include "text.hpp"
#include "tree.hpp"
#include "try_edits.hpp"

#include <velum/values/compare.hpp>

#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr char const* usage = "usage: scene [MODEL.obj [OUT.velum]] | scene show FILE.velum | scene --help";

constexpr char const* help = R"(
scene [MODEL.obj [OUT.velum]]  reads a Wavefront OBJ model, stores it as a graph of objects, reads it back, prints it,
                               and edits it without storing that
scene show FILE.velum          prints what a stored file holds

Without a model it takes a small one of its own. OUT.velum is the model's name in the current folder by default.
)";

struct usage_error {};

using factory = velum::iptr<velum::i_object_factory_t>;

template <class Work>
double milliseconds(Work work) {
    auto const start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

fs::path program_folder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

fs::path own_model() {
    fs::path const beside_source = SCENE_MODEL;
    std::error_code error;
    return fs::exists(beside_source, error) ? beside_source : program_folder() / "model" / beside_source.filename();
}

// Null without the module that has notes.
plugin::module const* load_module(std::optional<plugin::module>& module) {
    fs::path const folder = program_folder();
    fs::path const file = folder / SCENE_NOTE_MODULE;
    std::error_code error;
    return !folder.empty() && fs::exists(file, error) ? &module.emplace(file.c_str()) : nullptr;
}

std::string bytes_of(fs::path const& file) {
    std::ifstream stream = scene::open_to_read(file);
    return {std::istreambuf_iterator(stream), {}};
}

// An order tells whether two are equal: then neither is before the other.
bool is_same(boost::any const& a, boost::any const& b) {
    return !velum::any_compare(a, b) && !velum::any_compare(b, a);
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

void store(fs::path const& model_file, fs::path const& out, factory const& classes) {
    std::error_code error;
    if (fs::equivalent(model_file, out, error)) {
        throw std::runtime_error(out.string() + ": would be written over the model");
    }
    scene::model model;
    double const loaded = milliseconds([&] { model = scene::load_model(model_file); });
    auto const document = scene::make_document(model, classes);
    double const written = milliseconds([&] { scene::save(out, document); });
    velum::iptr<velum::i_unknown_map_t> copy;
    double const read = milliseconds([&] { copy = scene::load(out, classes); });

    scene::description const described = scene::describe(copy);
    if (!is_same(scene::describe(document), described)) {
        throw std::runtime_error(out.string() + ": what was read differs from what was written");
    }
    scene::print_tree(std::cout, out.string(), described);
    std::cout << fs::file_size(out) << " bytes; all " << described.size() << " objects came back as they were\n";
    scene::try_edits(std::cout, document, bytes_of(out));
    std::cout << std::fixed << std::setprecision(2) << "model loaded in " << loaded << " ms, document written in "
              << written << " ms, read in " << read << " ms\n";
    print_notes(model);
}

void show(fs::path const& file, factory const& classes) {
    scene::print_tree(std::cout, file.string(), scene::describe(scene::load(file, classes)));
}

void run(std::vector<std::string> const& arguments, std::optional<plugin::module>& module) {
    auto const classes = [&module] { return scene::make_factory(load_module(module)); };
    bool const is_show = !arguments.empty() && arguments[0] == "show";
    bool const has_option = !arguments.empty() && arguments[0].starts_with('-');
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::cout << usage << '\n' << help;
    } else if (is_show && arguments.size() == 2) {
        show(arguments[1], classes());
    } else if (is_show || has_option || arguments.size() > 2) {
        throw usage_error();
    } else {
        fs::path const model = arguments.empty() ? own_model() : fs::path(arguments[0]);
        store(model, arguments.size() == 2 ? fs::path(arguments[1]) : fs::path(model.stem()) += ".velum", classes());
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output: can't be written");
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::optional<plugin::module> module;  // outlives what it made and what it may have thrown
    try {
        run({argv + 1, argv + argc}, module);
        return 0;
    } catch (usage_error const&) {
        std::cerr << usage << '\n';
        return 2;
    } catch (std::exception const& failure) {
        std::cerr << "scene: " << scene::printable(failure.what(), 2000) << '\n';
        return 1;
    }
}
