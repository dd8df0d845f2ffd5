#include "model.hpp"

#include "files.hpp"
#include "model_builder.hpp"

#include <fstream>
#include <map>
#include <stdexcept>

namespace scene {
namespace {

std::string trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Finds material libraries beside the model, whatever characters the folder's name has.
class library_reader : public tinyobj::MaterialReader {
public:
    library_reader(std::filesystem::path folder, std::set<std::string>& notes)
        : folder_(std::move(folder)), notes_(notes) {}

    bool operator()(std::string const& name, std::vector<tinyobj::material_t>* materials,
                    std::map<std::string, int>* places, std::string* warning, std::string* error) override {
        try {
            std::ifstream stream = open_to_read(folder_ / name);
            tinyobj::LoadMtl(places, materials, &stream, warning, error);
            return true;
        } catch (std::runtime_error const& failure) {
            notes_.insert(failure.what());
            return false;
        }
    }

private:
    std::filesystem::path folder_;
    std::set<std::string>& notes_;
};

model_builder& builder(void* data) {
    return *static_cast<model_builder*>(data);
}

// The loader can also put meshes together on its own. But it leaves faces out without a word, and follows the indices
// of damaged files before anyone could check them. So it only splits the lines here.
tinyobj::callback_t callbacks() {
    tinyobj::callback_t calls;
    calls.vertex_cb = [](void* to, float x, float y, float z, float) { builder(to).add_position(x, y, z); };
    calls.normal_cb = [](void* to, float x, float y, float z) { builder(to).add_normal(x, y, z); };
    calls.texcoord_cb = [](void* to, float u, float v, float) { builder(to).add_texcoord(u, v); };
    calls.index_cb = [](void* to, tinyobj::index_t* corners, int count) { builder(to).add_face(corners, count); };
    calls.usemtl_cb = [](void* to, char const* name, int) { builder(to).use_material(trimmed(name)); };
    calls.object_cb = [](void* to, char const* name) { builder(to).enter_object(trimmed(name)); };
    calls.group_cb = [](void* to, char const** names, int count) {
        std::string all;
        for (int i = 0; i < count; ++i) {
            all.append(i == 0 ? "" : " ").append(names[i]);
        }
        builder(to).enter_group(all);
    };
    calls.mtllib_cb = [](void* to, tinyobj::material_t const* materials, int count) {
        builder(to).result.materials.assign(materials, materials + count);
    };
    return calls;
}

// Every library that is read ends in a material, be it one without a name. Of several with one name the first counts.
void tidy(std::vector<tinyobj::material_t>& materials) {
    std::set<std::string> names;
    std::erase_if(materials, [&names](tinyobj::material_t& material) {
        material.name = trimmed(material.name);
        return material.name.empty() || !names.insert(material.name).second;
    });
}

}  // namespace

model load_model(std::filesystem::path const& file) {
    std::ifstream stream = open_to_read(file);
    model_builder made;
    library_reader libraries(file.parent_path(), made.result.notes);
    try {
        tinyobj::LoadObjWithCallback(stream, callbacks(), &made, &libraries);
        if (stream.bad()) {
            throw std::runtime_error("reading failed");
        }
        tidy(made.result.materials);
        made.finish();
    } catch (std::runtime_error const& failure) {
        throw std::runtime_error(file.string() + ": " + failure.what());
    }
    if (made.result.meshes.empty()) {
        throw std::runtime_error(file.string() + ": no Wavefront OBJ model, for it has no faces");
    }
    made.result.name = file.stem().string();
    return std::move(made.result);
}

}  // namespace scene
