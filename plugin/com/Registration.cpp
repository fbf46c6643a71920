#include "plugin/com/Registration.h"

#include "kavrelon.h"

namespace kavrelon {
namespace {

// The system's marshaler, which works from the type library.
constexpr const wchar_t* kTypeLibraryMarshaler = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kVersion = L"1.0";

struct ClassRow {
    const CLSID& clsid;
    const GUID& library;
    const wchar_t* progId;  // without its version
    const wchar_t* description;
};
const ClassRow kClasses[] = {
    {CLSID_clsTerminal, LIBID_kavrelon, L"kavrelon.clsTerminal", L"Terminal Window"},
};

/// A type library in the file's resources. The host's own contract yields to what the host has registered.
struct LibraryRow {
    const GUID& library;
    const wchar_t* description;
    int resource;
};
const LibraryRow kLibraries[] = {
    {LIBID_kavrelon, L"Kavrelon terminal plug-in", 1},
    {LIBID_quillabor, L"Quillabor plug-in interfaces", 2},
};

struct InterfaceRow {
    const IID& iid;
    const GUID& library;
    const wchar_t* name;
    bool isHosts;
};
const InterfaceRow kInterfaces[] = {
    {IID_ITerminalCallBack, LIBID_kavrelon, L"ITerminalCallBack", false},
    {IID_IClientMain, LIBID_quillabor, L"IClientMain", true},
    {IID_IClientReceive, LIBID_quillabor, L"IClientReceive", true},
    {IID_IClientEscTree, LIBID_quillabor, L"IClientEscTree", true},
    {IID_IClientParent, LIBID_quillabor, L"IClientParent", true},
};

std::wstring braced(const GUID& guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return text;
}

void addClass(std::vector<RegistryGroup>& groups, const ClassRow& row, const std::wstring& path) {
    const std::wstring id = braced(row.clsid);
    const std::wstring key = L"CLSID\\" + id;
    const std::wstring progId = row.progId;
    const std::wstring versionedProgId = progId + L".1";
    groups.push_back({.key = key,
                      .values = {{key, L"", row.description},
                                 {key + L"\\InprocServer32", L"", path},
                                 {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
                                 {key + L"\\ProgID", L"", versionedProgId},
                                 {key + L"\\VersionIndependentProgID", L"", progId},
                                 {key + L"\\TypeLib", L"", braced(row.library)},
                                 {key + L"\\Version", L"", kVersion},
                                 {key + L"\\Programmable", L"", L""}}});
    groups.push_back({.key = versionedProgId,
                      .values = {{versionedProgId, L"", row.description}},
                      .owner = {versionedProgId + L"\\CLSID", L"", id}});
    groups.push_back(
        {.key = progId,
         .values = {{progId, L"", row.description}, {progId + L"\\CurVer", L"", versionedProgId}},
         .owner = {progId + L"\\CLSID", L"", id}});
}

void addLibrary(std::vector<RegistryGroup>& groups, const LibraryRow& row, const std::wstring& path) {
    const std::wstring key = L"TypeLib\\" + braced(row.library) + L'\\' + kVersion;
    const std::wstring file = row.resource == 1 ? path : path + L'\\' + std::to_wstring(row.resource);
    groups.push_back({.key = key,
                      .values = {{key, L"", row.description},
                                 {key + L"\\0\\win32", L"", file},
                                 {key + L"\\FLAGS", L"", L"0"},
                                 {key + L"\\HELPDIR", L"", path.substr(0, path.rfind(L'\\'))}}});
}

void addInterface(std::vector<RegistryGroup>& groups, const InterfaceRow& row) {
    const std::wstring key = L"Interface\\" + braced(row.iid);
    const std::wstring library = braced(row.library);
    groups.push_back({.key = key,
                      .values = {{key, L"", row.name},
                                 {key + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaler},
                                 {key + L"\\TypeLib", L"Version", kVersion}},
                      .owner = {key + L"\\TypeLib", L"", library},
                      .yields = row.isHosts});
}

}  // namespace

std::vector<RegistryGroup> registryGroups(const std::wstring& path) {
    std::vector<RegistryGroup> groups;
    for (const ClassRow& row : kClasses) addClass(groups, row, path);
    for (const LibraryRow& row : kLibraries) addLibrary(groups, row, path);
    for (const InterfaceRow& row : kInterfaces) addInterface(groups, row);
    return groups;
}

}  // namespace kavrelon
