// Included first by every source that holds mutants. MORLAINE_MUTANT names the one that is active, by its number; which
// ones are come upon is noted in the file MORLAINE_REACHED, a byte each.
#pragma once
#pragma GCC system_header

#include <cstdlib>
#include <type_traits>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace mutant {

inline constexpr std::size_t most = 1 << 14;

inline unsigned char* reachedFile()
{
    const char* const path = std::getenv("MORLAINE_REACHED");
    const int file = path == nullptr ? -1 : ::open(path, O_RDWR);
    void* const bytes = file < 0 ? MAP_FAILED : ::mmap(nullptr, most, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ::close(file); // some tests count descriptors
    return bytes == MAP_FAILED ? nullptr : static_cast<unsigned char*>(bytes);
}

inline int activeNumber()
{
    const char* const number = std::getenv("MORLAINE_MUTANT");
    return number == nullptr ? -1 : std::atoi(number);
}

inline bool isActive(int number)
{
    static unsigned char* const reached = reachedFile();
    static const int active = activeNumber();
    if (reached != nullptr) {
        reached[number] = 1;
    }
    return number == active;
}

constexpr bool is(int number)
{
    return !std::is_constant_evaluated() && isActive(number);
}

#define MUTANT_OPERATOR(name, usual, other)                                                                            \
    template <typename A, typename B>                                                                                  \
    constexpr auto name(int number, const A& a, const B& b)                                                            \
    {                                                                                                                  \
        return is(number) ? a other b : a usual b;                                                                     \
    }

MUTANT_OPERATOR(lt, <, <=)
MUTANT_OPERATOR(le, <=, <)
MUTANT_OPERATOR(gt, >, >=)
MUTANT_OPERATOR(ge, >=, >)
MUTANT_OPERATOR(eq, ==, !=)
MUTANT_OPERATOR(ne, !=, ==)
MUTANT_OPERATOR(add, +, -)
MUTANT_OPERATOR(sub, -, +)
MUTANT_OPERATOR(mul, *, +)
MUTANT_OPERATOR(div, /, *)

} // namespace mutant
