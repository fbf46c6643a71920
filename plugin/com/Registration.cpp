#include "plugin/com/Registration.h"

#include <comcat.h>

#include "htmllabel/com/LabelParts.h"
#include "kavrelon.h"

namespace kavrelon {
namespace {

// The system's marshalers: one works from the type library, the other is for plain automation interfaces.
constexpr const wchar_t* kTypeLibraryMarshaler = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kDispatchMarshaler = L"{00020420-0000-0000-C000-000000000046}";
constexpr const wchar_t* kVersion = L"1.0";

// What form designers show for the control: a bitmap in the library's resources.
constexpr const wchar_t* kToolboxBitmap = L"101";

struct ClassRow {
    const CLSID& clsid;
    const GUID& library;
    const wchar_t* progId;  // without its version
    const wchar_t* description;
    bool isControl;
};
const ClassRow kClasses[] = {
    {CLSID_clsTerminal, LIBID_kavrelon, L"kavrelon.clsTerminal", L"Terminal Window", false},
    {CLSID_HTMLLabel, LIBID_kavrelon, L"kavrelon.HTMLLabel", L"HTML Label", true},
};

/// A type library in the file's resources.
struct LibraryRow {
    const GUID& library;
    const wchar_t* description;
    int resource;
    const wchar_t* flags;
};
const LibraryRow kKavrelon{LIBID_kavrelon, L"Kavrelon terminal plug-in", 1, L"2"};  // it has a control
const LibraryRow kQuillabor{LIBID_quillabor, L"Quillabor plug-in interfaces", 2, L"0"};

struct InterfaceRow {
    const IID& iid;
    const LibraryRow& library;
    const wchar_t* name;
    bool isHosts;  // of the host's contract: what the host has registered stays
    const wchar_t* marshaler = kTypeLibraryMarshaler;
};
const InterfaceRow kInterfaces[] = {
    {IID_ITerminalCallBack, kKavrelon, L"ITerminalCallBack", false},
    {IID_ITerminalWindow, kKavrelon, L"ITerminalWindow", false},
    {IID_IHTMLLabel, kKavrelon, L"IHTMLLabel", false},
    {DIID_DHTMLLabelEvents, kKavrelon, L"DHTMLLabelEvents", false, kDispatchMarshaler},
    {IID_IClientMain, kQuillabor, L"IClientMain", true},
    {IID_IClientReceive, kQuillabor, L"IClientReceive", true},
    {IID_IClientEscTree, kQuillabor, L"IClientEscTree", true},
    {IID_IClientParent, kQuillabor, L"IClientParent", true},
};

std::wstring braced(const GUID& guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return text;
}

/// By way of a narrow text: the run-time library makes wide ones by its formatted output, which is 27 KB.
template <class Number>
std::wstring numberText(Number number) {
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

std::wstring libraryKey(const GUID& library) {
    return L"TypeLib\\" + braced(library) + L'\\' + kVersion;
}

/// The entries that tell containers that a class is a control, and how to treat it.
void addControl(RegistryGroup& group, const std::wstring& key, const std::wstring& path) {
    const std::wstring categories = key + L"\\Implemented Categories\\";
    const std::wstring status = numberText(LabelFace::kMiscStatus);
    const RegistryValue values[] = {
        {key + L"\\Control", L"", L""},
        {key + L"\\MiscStatus", L"", L"0"},
        {key + L"\\MiscStatus\\1", L"", status},
        {key + L"\\ToolboxBitmap32", L"", path + L", " + kToolboxBitmap},
        {categories + braced(CATID_Control), L"", L""},
        {categories + braced(CATID_Programmable), L"", L""},
    };
    group.values.insert(group.values.end(), std::begin(values), std::end(values));
}

void addClass(std::vector<RegistryGroup>& groups, const ClassRow& row, const std::wstring& path) {
    const std::wstring id = braced(row.clsid);
    const std::wstring key = L"CLSID\\" + id;
    const std::wstring progId = row.progId;
    const std::wstring versionedProgId = progId + L".1";
    const RegistryValue file{key + L"\\InprocServer32", L"", path};
    groups.push_back({.values = {{key, L"", row.description},
                                 file,
                                 {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
                                 {key + L"\\ProgID", L"", versionedProgId},
                                 {key + L"\\VersionIndependentProgID", L"", progId},
                                 {key + L"\\TypeLib", L"", braced(row.library)},
                                 {key + L"\\Version", L"", kVersion},
                                 {key + L"\\Programmable", L"", L""}},
                      .file = file});
    if (row.isControl) addControl(groups.back(), key, path);
    groups.push_back({.values = {{versionedProgId, L"", row.description}},
                      .owner = {versionedProgId + L"\\CLSID", L"", id},
                      .file = file});
    groups.push_back(
        {.values = {{progId, L"", row.description}, {progId + L"\\CurVer", L"", versionedProgId}},
         .owner = {progId + L"\\CLSID", L"", id},
         .file = file});
}

RegistryValue fileOf(const LibraryRow& row, const std::wstring& path) {
    const std::wstring file = row.resource == 1 ? path : path + L'\\' + numberText(row.resource);
    return {libraryKey(row.library) + L"\\0\\win32", L"", file};
}

void addLibrary(std::vector<RegistryGroup>& groups, const LibraryRow& row, const std::wstring& path) {
    const std::wstring key = libraryKey(row.library);
    const RegistryValue file = fileOf(row, path);
    groups.push_back({.values = {{key, L"", row.description},
                                 file,
                                 {key + L"\\FLAGS", L"", row.flags},
                                 {key + L"\\HELPDIR", L"", path.substr(0, path.rfind(L'\\'))}},
                      .file = file});
}

void addInterface(std::vector<RegistryGroup>& groups, const InterfaceRow& row, const std::wstring& path) {
    const std::wstring key = L"Interface\\" + braced(row.iid);
    groups.push_back({.values = {{key, L"", row.name},
                                 {key + L"\\ProxyStubClsid32", L"", row.marshaler},
                                 {key + L"\\TypeLib", L"Version", kVersion}},
                      .owner = {key + L"\\TypeLib", L"", braced(row.library.library)},
                      .file = fileOf(row.library, path),
                      .yields = row.isHosts});
}

}  // namespace

std::vector<RegistryGroup> registryGroups(const std::wstring& path) {
    std::vector<RegistryGroup> groups;
    for (const ClassRow& row : kClasses) addClass(groups, row, path);
    for (const LibraryRow& row : {kKavrelon, kQuillabor}) addLibrary(groups, row, path);
    for (const InterfaceRow& row : kInterfaces) addInterface(groups, row, path);
    return groups;
}

}  // namespace kavrelon
