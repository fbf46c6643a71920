// The library as a file: what it exports, describes and leaves behind when it is unloaded.

#include <array>
#include <fstream>
#include <sstream>

#include "headless/EscapeRows.h"
#include "support/win32/ReplacedImports.h"
#include "tests/windows/ComTestSupport.h"
#include "tests/windows/ProcessUsage.h"

namespace kavrelon {
namespace {

class ComLibrary : public ComCopy {};

TEST_F(ComLibrary, MakesOnlyWholeObjectsOfItsClass) {
    void* object = nullptr;
    EXPECT_EQ((library->call<REFCLSID, REFIID, void**>("DllGetClassObject", IID_IUnknown, IID_IClassFactory,
                                                       &object)),
              CLASS_E_CLASSNOTAVAILABLE);
    const auto factory = library->classObject();
    ASSERT_TRUE(factory);
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ComLibrary, CanBeUnloadedWhenNothingHoldsIt) {
    const auto expectUnloadable = [&](HRESULT answer, const char* when) {
        EXPECT_EQ(library->call("DllCanUnloadNow"), answer) << when;
    };
    auto factory = library->classObject();
    expectUnloadable(S_FALSE, "a factory is out");
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory = {};
    expectUnloadable(S_FALSE, "the server is locked");
    library->classObject()->LockServer(FALSE);
    expectUnloadable(S_OK, "nothing is out");
    auto receive = library->create<IClientMain>().query<IClientReceive>();
    expectUnloadable(S_FALSE, "one interface of an object is out");
    library->classObject()->LockServer(FALSE);
    expectUnloadable(S_FALSE, "a lock taken off once too often does not count for the object");
    receive = {};
    expectUnloadable(S_OK, "the object is gone");
}

TEST_F(ComLibrary, ItsStartBringsInNothingThatFewSessionsNeed) {
    const HMODULE module = GetModuleHandleW(copy.c_str());
    const auto imports = [module](std::string_view name) {
        return ReplacedImports(module, {{name, nullptr}}).count() > 0;
    };
    EXPECT_TRUE(imports("SystemFunction036")) << "the stack guard's random number";
    for (const char* function :
         {"CryptAcquireContextA", "InitCommonControlsEx", "WICConvertBitmapSource", "EnumPrintersA"}) {
        EXPECT_FALSE(imports(function)) << function;
    }
}

std::string guidText(const GUID& guid) {
    if (guid == __uuidof(IClientMain)) return "{the host's}";  // chosen when the library is configured
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return toAnsi(text);
}

std::string nameOf(ITypeInfo& info, MEMBERID member) {
    Bstr name;
    info.GetDocumentation(member, name.put(), nullptr, nullptr, nullptr);
    return toAnsi(name.view());
}

/// A remark for what an object browser has no line about.
const char* remarkOnHelp(ITypeInfo& info, MEMBERID member) {
    Bstr help;
    info.GetDocumentation(member, nullptr, help.put(), nullptr, nullptr);
    if (help.view().empty()) return " without help";
    return help.view().find(L'\n') == std::wstring_view::npos ? "" : " with help of several lines";
}

std::string typeText(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return typeText(info, *type.lptdesc) + "*";
    if (type.vt == VT_SAFEARRAY) return "array of " + typeText(info, *type.lptdesc);
    if (type.vt != VT_USERDEFINED) return "vt" + std::to_string(type.vt);
    ComPtr<ITypeInfo> referred;
    info.GetRefTypeInfo(type.hreftype, referred.put());
    return nameOf(*referred, MEMBERID_NIL);
}

void dumpFunction(std::ostream& out, ITypeInfo& info, const FUNCDESC& function) {
    out << "  +" << function.oVft << " id " << function.memid << " kind " << function.invkind << " flags "
        << function.wFuncFlags << ' ' << nameOf(info, function.memid) << '(';
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        out << (i > 0 ? ", " : "") << typeText(info, parameter.tdesc) << " pass "
            << parameter.paramdesc.wParamFlags;
    }
    out << ") " << typeText(info, function.elemdescFunc.tdesc) << remarkOnHelp(info, function.memid) << '\n';
}

void dumpType(std::ostream& out, ITypeInfo& info) {
    TYPEATTR* attributes = nullptr;
    info.GetTypeAttr(&attributes);
    out << "type " << nameOf(info, MEMBERID_NIL) << " kind " << attributes->typekind << ' '
        << guidText(attributes->guid) << " flags " << attributes->wTypeFlags
        << remarkOnHelp(info, MEMBERID_NIL) << '\n';
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> other;
    const bool isDual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0 &&
                        SUCCEEDED(info.GetRefTypeOfImplType(UINT(-1), &reference));
    if (isDual) info.GetRefTypeInfo(reference, other.put());
    // A dual interface is described twice: the one behind it has the places in the table.
    ITypeInfo& members = isDual ? *other : info;
    FUNCDESC* function = nullptr;
    for (UINT i = 0; SUCCEEDED(members.GetFuncDesc(i, &function)); ++i) {
        dumpFunction(out, members, *function);
        members.ReleaseFuncDesc(function);
    }
    for (UINT i = 0; attributes->typekind == TKIND_COCLASS && i < attributes->cImplTypes; ++i) {
        INT flags = 0;
        info.GetImplTypeFlags(i, &flags);
        info.GetRefTypeOfImplType(i, &reference);
        info.GetRefTypeInfo(reference, other.put());
        out << "  implements " << nameOf(*other, MEMBERID_NIL) << " flags " << flags << '\n';
    }
    info.ReleaseTypeAttr(attributes);
}

std::string dumpLibrary(int resource) {
    std::ostringstream out;
    ComPtr<ITypeLib> library;
    const std::wstring path = libraryPath() + L'\\' + std::to_wstring(resource);
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()))) return "not loaded";
    TLIBATTR* attributes = nullptr;
    library->GetLibAttr(&attributes);
    out << "library " << guidText(attributes->guid) << ' ' << attributes->wMajorVerNum << '.'
        << attributes->wMinorVerNum << '\n';
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library->GetTypeInfo(i, info.put());
        dumpType(out, *info);
    }
    return out.str();
}

// Hosts are compiled against these: a change here breaks every one of them.
TEST_F(ComLibrary, KeepsItsTypeLibrariesBinaryCompatible) {
    std::ifstream file("tests/windows/typelibraries.txt");
    std::ostringstream golden;
    golden << file.rdbuf();
    EXPECT_EQ(dumpLibrary(1) + dumpLibrary(2), golden.str());
}

/// The lowest free slot of a thread's data, which is always the next one: a leak makes it higher.
DWORD nextThreadSlot() {
    const DWORD slot = TlsAlloc();
    TlsFree(slot);
    return slot;
}

void useOnce(const std::wstring& path) {
    const auto parent = make<RecordingParent>();
    {
        const LoadedLibrary library(path);
        const auto plugIn = library.create<IClientMain>();
        ASSERT_TRUE(plugIn);
        const auto table = plugIn.query<IClientEscTree>();
        ComPtr<ITypeInfo> members;
        Bstr text;
        EXPECT_EQ(table->GetTypeInfo(0, LOCALE_NEUTRAL, members.put()), S_OK);
        EXPECT_EQ(table->get_EscTreeString(500, text.put()), runtimeError(9));
        EXPECT_EQ(plugIn->SetClientParent(parent.get()), S_OK);
        EXPECT_EQ(plugIn->InitializeClass(), S_OK);
        EXPECT_EQ(process(*table, rows::kSetAttribute, {L"1", L"32"}), S_OK);
        EXPECT_EQ(plugIn->DestroyClass(), S_OK);
    }
    SetErrorInfo(0, nullptr);
    ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr) << "the library stays loaded";
}

TEST_F(ComLibrary, LeavesNothingBehindWhenUnloaded) {
    library.reset();
    // Every host has these loaded; in Wine each load and unload of them loses a handle.
    const std::array<LoadedLibrary, 4> loadedByAnyHost{LoadedLibrary(L"user32"), LoadedLibrary(L"gdi32"),
                                                       LoadedLibrary(L"shell32"),
                                                       LoadedLibrary(L"winspool.drv")};
    for (int round = 0; round < 50 && !HasFailure(); ++round) useOnce(copy);
    const DWORD slot = nextThreadSlot();
    const DWORD handles = countHandles();
    const std::size_t bytes = committedBytes();
    for (int round = 0; round < 2000 && !HasFailure(); ++round) useOnce(copy);
    EXPECT_EQ(nextThreadSlot(), slot);
    EXPECT_EQ(countHandles(), handles);
    // 64 bytes a round would be a leak; the heap's own fragmentation is less.
    EXPECT_LE(committedBytes(), bytes + 128 * 1024);
    library.emplace(copy);
}

}  // namespace
}  // namespace kavrelon
