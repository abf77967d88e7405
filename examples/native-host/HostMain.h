#pragma once

#include "Library.h"

#include <cstdio>
#include <cstdlib>

/// The main program of a host: `<program> LIBRARY [SECONDS]` loads the library, shows a window for at most
/// that many seconds, unloads the library and reports this. @p serve returns true on success.
inline int hostMain(int argc, char **argv, const char *program, bool (*serve)(const Library &, int seconds))
{
    if (argc < 2) {
        std::fprintf(stderr, "%s LIBRARY [SECONDS]\n", program);
        return 2;
    }
    bool good = false;
    {
        const Library library(argv[1]);
        good = library.error().empty() && serve(library, argc > 2 ? std::atoi(argv[2]) : 3600);
        if (!library.error().empty())
            std::fprintf(stderr, "%s\n", library.error().c_str());
    }
    std::printf(good ? "unloaded\n" : "failed\n");
    return good ? 0 : 1;
}
