#include "inspect.hpp"

#include "dot_view.hpp"
#include "input.hpp"
#include "json_view.hpp"
#include "progress.hpp"
#include "quoting.hpp"
#include "shortened.hpp"
#include "summary_view.hpp"
#include "text_view.hpp"
#include "walker.hpp"

#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace inspect {
namespace {

constexpr content_limits shown_bytes{.key = 200, .text = 200, .bytes = 32};
constexpr std::uint64_t shown_elements = 16;
constexpr std::uint64_t without_end = std::numeric_limits<std::uint64_t>::max();

std::unique_ptr<view> view_for(options const& chosen, std::ostream& to) {
    switch (chosen.as) {
        case output::json:
            return std::make_unique<json_view>(to, chosen.offsets);
        case output::dot:
            return std::make_unique<dot_view>(to);
        case output::summary:
            return std::make_unique<summary_view>(to);
        case output::text:
            break;
    }
    return std::make_unique<text_view>(to, chosen.offsets);
}

std::optional<std::uint32_t> word_at(std::string_view bytes, std::size_t offset) {
    if (bytes.size() < offset + 4) {
        return std::nullopt;
    }
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
}

void pass_over(input& from, options const& chosen) {
    if (std::uint64_t const there = from.skip(chosen.start); there != chosen.start) {
        throw std::runtime_error(name_of(chosen) + ": there are no more than " + std::to_string(there) +
                                 " bytes to pass over");
    }
}

class reading {
public:
    reading(options const& chosen, input& from, view& to)
        : from_(from),
          to_(to),
          walker_(from, chosen.classes, to, chosen.full ? content_limits() : shown_bytes),
          objects_(chosen.objects ? *chosen.objects : begins_with_object(from.peek(4096), chosen.classes)),
          is_one_map_(!objects_ && !chosen.count),
          most_(chosen.count.value_or(objects_ ? without_end : 1)) {}

    ending run() {
        to_.begin(objects_ ? document::objects : is_one_map_ ? document::map : document::maps);
        ending end;
        try {
            read_roots();
        } catch (damage const& broken) {
            end.broken = broken;
        }
        end.references = walker_.references();
        end.offset = from_.position();
        end.rest = end.broken ? 0 : from_.skip_rest();
        return end;
    }

private:
    // What is empty holds no objects, but a map it should hold.
    void read_roots() {
        for (std::uint64_t root = 0; root != most_ && (is_one_map_ || !from_.peek(1).empty()); ++root) {
            if (objects_) {
                walker_.read_object(root);
            } else {
                walker_.read_map(is_one_map_ ? std::nullopt : std::optional(root));
            }
        }
    }

    input& from_;
    view& to_;
    walker walker_;
    bool objects_;
    bool is_one_map_;
    std::uint64_t most_;
};

}  // namespace

// An object begins with 2, its number and the identifier of its class; a map with a count, the length of a key, and
// behind an empty key the tag of a type, which as the front of an identifier is next to impossible. Nulls may come
// first.
bool begins_with_object(std::string_view head, class_catalogue const& classes) {
    std::size_t at = 0;
    while (word_at(head, at) == 0U) {
        at += 4;
    }
    if (word_at(head, at) != 2U) {
        return false;
    }
    velum::guid_t clsid;
    if (head.size() >= at + 8 + sizeof clsid) {
        std::memcpy(&clsid, head.data() + at + 8, sizeof clsid);
    }
    auto const tag = word_at(head, at + 8);
    return classes.find(clsid) != nullptr || (word_at(head, at + 4) == 0U && (!tag || type_of_tag(*tag) == nullptr));
}

std::optional<damage> inspect(options const& chosen, std::ostream& to) {
    input from = open_input(chosen.file);
    pass_over(from, chosen);
    bool const is_at_end = chosen.as == output::summary;
    std::unique_ptr<view> const whole = view_for(chosen, to);
    shortened short_of_long(*whole, shown_elements);
    bool const shortens = !chosen.full && (chosen.as == output::text || chosen.as == output::json);
    view& shown = shortens ? static_cast<view&>(short_of_long) : *whole;
    ending end;
    {
        progress line(from, is_at_end);
        from.watch = [&](input const& watched) {
            line.show(watched);
            to.flush();
            check_written(to);
        };
        end = reading(chosen, from, shown).run();
    }
    shown.finish(end);
    check_written(to.flush());
    return end.broken;
}

std::string name_of(options const& chosen) {
    return chosen.file == "-" ? "standard input" : printable(chosen.file);
}

void check_written(std::ostream& to) {
    if (!to) {
        throw std::runtime_error("what is printed can't be written: " + std::generic_category().message(errno));
    }
}

// Of a long way the end says most.
std::string message(damage const& broken) {
    constexpr std::size_t most_steps = 16;
    std::size_t const first = broken.path.size() > most_steps ? broken.path.size() - most_steps : 0;
    std::string path = first == 0 ? "" : "(" + std::to_string(first) + " levels)";
    for (std::size_t i = first; i != broken.path.size(); ++i) {
        if (auto const* const name = std::get_if<std::string>(&broken.path[i])) {
            path += (path.empty() ? "" : ".") + name_for_people(*name);
        } else {
            path += '[' + std::to_string(std::get<std::uint64_t>(broken.path[i])) + ']';
        }
    }
    return std::string(broken.is_unknown_class ? "stopped" : "broken") + " at byte " + std::to_string(broken.offset) +
           (path.empty() ? "" : ", at " + path) + ": expected " + broken.expected + ", found " + broken.found;
}

}  // namespace inspect
