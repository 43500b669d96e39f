// kivsettings: a KIV printer's private settings as text, for support engineers and for rolling
// one configuration out to many tills (see --help). The spooler's commands exist only on
// Windows; decode and --help run everywhere.
#include <string>
#include <vector>

#include "kivsettings.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include "kivsettings_win.h"

int wmain(int argc, wchar_t** argv) {
    // The settings file goes to standard output byte for byte, "\n" line ends included.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i)
        args.push_back(Utf8FromWide(argv[i]));
    return RunKivSettings(args, RunSpoolerCommand);
}
#else
int main(int argc, char** argv) {
    return RunKivSettings(std::vector<std::string>(argv + 1, argv + argc), nullptr);
}
#endif
