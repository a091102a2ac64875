#pragma once

#include <string>
#include <windows.h>

/// Changes values below HKEY_LOCAL_MACHINE.
namespace registry {

inline void write(const std::wstring &key, const wchar_t *value, const std::wstring &text)
{
    RegSetKeyValueW(
        HKEY_LOCAL_MACHINE, key.c_str(), value, REG_SZ, text.c_str(),
        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

inline void write(const std::wstring &key, const wchar_t *value, DWORD number)
{
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), value, REG_DWORD, &number, sizeof(number));
}

inline void remove(const std::wstring &key)
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
}

} // namespace registry
