#include "driver/asioregistry_windows.h"

#include <type_traits>
#include <windows.h>

namespace {

struct CloseKey
{
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

Key openKey(HKEY root, const wchar_t *path)
{
    HKEY key = nullptr;
    return Key(RegOpenKeyExW(root, path, 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr);
}

/// Returns a text value of the key `path` below `root`, or an empty text if there is none. A null
/// `value` means the default value of the key.
std::wstring text(HKEY root, const std::wstring &path, const wchar_t *value)
{
    DWORD bytes = 0;
    if (RegGetValueW(root, path.c_str(), value, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) !=
        ERROR_SUCCESS)
        return {};
    std::wstring read(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(root, path.c_str(), value, RRF_RT_REG_SZ, nullptr, read.data(), &bytes) !=
        ERROR_SUCCESS)
        return {};
    return read.c_str(); // drops the terminating zeros
}

/// Returns whether a driver's file exists. A name without a folder means a file in the system's
/// search path.
bool fileExists(const std::wstring &file)
{
    return !file.empty() && SearchPathW(nullptr, file.c_str(), nullptr, 0, nullptr, nullptr) != 0;
}

/// Converts a name to UTF-8 and cuts it to the length of the array.
AsioHost::Name utf8(const std::wstring &name)
{
    AsioHost::Name cut = {};
    const int length = static_cast<int>(name.size());
    std::string all(name.size() * 3, '\0'); // UTF-8 needs at most three bytes per UTF-16 unit
    const int bytes = WideCharToMultiByte(
        CP_UTF8, 0, name.data(), length, all.data(), static_cast<int>(all.size()), nullptr,
        nullptr);
    all.resize(static_cast<std::size_t>(bytes));
    all.copy(cut.data(), cut.size());
    return cut;
}

/// Gets the name of the subkey with this index. Returns false after the last one.
bool subkeyAt(HKEY key, DWORD index, std::wstring &name)
{
    wchar_t buffer[256] = {}; // the system's limit for the name of a key
    DWORD length = 256;
    if (RegEnumKeyExW(key, index, buffer, &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
        return false;
    name = buffer;
    return true;
}

} // namespace

std::vector<AsioEntry> registeredAsioDrivers(int limit)
{
    std::vector<AsioEntry> entries;
    const Key list = openKey(HKEY_LOCAL_MACHINE, L"software\\asio");
    if (!list) return entries;
    std::wstring subkey;
    for (DWORD i = 0; static_cast<int>(entries.size()) < limit && subkeyAt(list.get(), i, subkey);
         ++i) {
        const std::wstring classId = text(list.get(), subkey, L"clsid");
        const std::wstring server = L"CLSID\\" + classId + L"\\InprocServer32";
        if (classId.empty() || !fileExists(text(HKEY_CLASSES_ROOT, server, nullptr))) continue;
        const std::wstring description = text(list.get(), subkey, L"description");
        entries.push_back({utf8(description.empty() ? subkey : description), classId});
    }
    return entries;
}
