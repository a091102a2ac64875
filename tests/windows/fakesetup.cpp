// A fake update. Named cscript.exe, it replaces the script host, which cannot unpack archives under
// Wine: it copies the archive, which is this program itself, to Setup.exe. Named Setup.exe, it only
// records that it was started.

#include <fstream>
#include <string>
#include <windows.h>

namespace {

int unpack(int argc, char **argv)
{
    if (argc != 4 || std::string(argv[1]) != "unzip.js") return 1;
    const std::string setup = std::string(argv[3]) + "\\Setup.exe";
    if (!CopyFileA(argv[2], setup.c_str(), TRUE)) return 1;
    std::ofstream("C:\\unpacked.txt") << argv[2];
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string program = path;
    if (program.substr(program.rfind('\\') + 1) == "cscript.exe") return unpack(argc, argv);
    std::ofstream("C:\\started.txt") << program;
    return 0;
}
