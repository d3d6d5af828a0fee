// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once
// The command line of a benchmark: a few optional whole numbers (sizes of the workload), and
// nothing else.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// One optional whole-number argument of a benchmark: its name in the usage line, its value
/// without the argument, and the smallest value accepted.
struct ZYLBenchArgument {
    const char *name;
    long value;
    long minimum = 1;
};

/// Returns the values of `arguments`, read in order from the arguments after the program;
/// fewer may be given. Anything else (another word, --help, a number out of range, one argument too many)
/// prints the usage line on the standard error stream and ends the process with exit code 2,
/// so a script sees a refused call instead of a run on a made-up workload.
inline std::vector<long> ZYLBenchReadArguments(int argc, char **argv, const std::vector<ZYLBenchArgument> &arguments = {})
{
    const auto refuse = [&] {
        std::string usage = std::string("usage: ") + (argc > 0 ? argv[0] : "bench");
        for (const ZYLBenchArgument &argument : arguments)
            usage += std::string(" [") + argument.name;
        usage += std::string(arguments.size(), ']');
        std::fprintf(stderr, "%s\n", usage.c_str());
        std::exit(2);
    };
    if (argc - 1 > int(arguments.size()))
        refuse();
    std::vector<long> values;
    for (const ZYLBenchArgument &argument : arguments)
        values.push_back(argument.value);
    for (int i = 1; i < argc; ++i) {
        char *end = nullptr;
        errno = 0;
        const long value = std::strtol(argv[i], &end, 10);
        if (end == argv[i] || *end != '\0' || errno == ERANGE || value < arguments[std::size_t(i - 1)].minimum
            || value > 1000000000L)
            refuse();
        values[std::size_t(i - 1)] = value;
    }
    return values;
}
