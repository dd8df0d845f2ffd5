#pragma once

namespace plugin {

/// A library of the system, loaded for as long as this lives.
class library {
public:
    /// Whether libraries that are loaded later may find their names in this one, where the system has the choice.
    enum class names { own, of_all };

    /// Throws `std::runtime_error`.
    explicit library(char const* path, names found = names::own);
    library(library const&) = delete;
    library& operator=(library const&) = delete;
    ~library();

    /// The address of what it exports under a name. Throws `std::runtime_error` when there is no such name.
    void* find(char const* name) const;

    /// Whether anybody has it loaded.
    static bool is_loaded(char const* path);

private:
    void* handle_;
};

}  // namespace plugin
