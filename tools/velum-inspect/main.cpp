#include "inspect.hpp"
#include "options.hpp"

#include <exception>
#include <iostream>

namespace {

constexpr int whole = 0, damaged = 1, in_the_way = 2;

int run(int count, char** arguments) {
    auto const chosen = inspect::parse(count, arguments);
    if (!chosen) {
        inspect::check_written(std::cout.flush());
        return whole;
    }
    auto const broken = inspect::inspect(*chosen, std::cout);
    if (broken) {
        std::cerr << "velum-inspect: " << inspect::name_of(*chosen) << ": " << inspect::message(*broken) << '\n';
    }
    return broken ? damaged : whole;
}

}  // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    try {
        return run(count, arguments);
    } catch (inspect::usage_error const& failure) {
        if (failure.what()[0] != '\0') {
            std::cerr << "velum-inspect: " << failure.what() << '\n';
        }
        std::cerr << "velum-inspect --help tells more\n";
    } catch (std::exception const& failure) {
        std::cerr << "velum-inspect: " << failure.what() << '\n';
    }
    return in_the_way;
}
