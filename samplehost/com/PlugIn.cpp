#include "samplehost/com/PlugIn.h"

#include <array>
#include <charconv>
#include <memory>
#include <new>
#include <utility>

#include "samplehost/Charset.h"
#include "samplehost/com/ComFailure.h"
#include "support/Bytes.h"
#include "support/com/ComText.h"

namespace kavrelon {

namespace {

constexpr std::string_view kSizeDescription = "Size Screen";
constexpr std::string_view kCoverDescription = "NewScreen";

struct DestroyArray {
    void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};
using ArgumentArray = std::unique_ptr<SAFEARRAY, DestroyArray>;

Bstr shownText(std::string_view field) {
    const std::u16string text = charactersOf(field);
    return Bstr(std::wstring(text.begin(), text.end()));
}

/// The fields as the plug-in expects them: an array of strings, with the first at index 1.
ArgumentArray toArguments(std::span<const std::string_view> fields, bool asShown) {
    SAFEARRAYBOUND bound{static_cast<ULONG>(fields.size()), 1};
    ArgumentArray array(SafeArrayCreate(VT_BSTR, 1, &bound));
    if (!array) throw std::bad_alloc();
    LONG index = bound.lLbound;
    for (const std::string_view field : fields) {
        // The array takes a copy.
        const Bstr text = asShown ? shownText(field) : toBstr(field);
        check(SafeArrayPutElement(array.get(), &index, text.get()), "An argument could not be stored");
        ++index;
    }
    return array;
}

template <class Interface>
ComPtr<Interface> asInterface(const ComPtr<IDispatch>& object, const char* what) {
    ComPtr<Interface> found;
    if (!object) throw ComFailure(std::string("The plug-in has no ") + what);
    check(object->QueryInterface(__uuidof(Interface), found.putVoid()),
          std::string("The plug-in has no ") + what);
    return found;
}

std::optional<int> toNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

PlugIn::PlugIn(ComPtr<IClientMain> main, ComPtr<ParentObject> parent, PlugInObserver& observer)
    : main_(std::move(main)), parent_(std::move(parent)), observer_(observer) {
    try {
        initialise();
    } catch (...) {
        main_->DestroyClass();
        throw;
    }
}

PlugIn::~PlugIn() {
    if (open_) {
        main_->OnLogOut();
        main_->OnClose();
    }
    main_->DestroyClass();
    parent_->detach();
}

void PlugIn::initialise() {
    // The parent first: the plug-in asks it for profile and settings file while it initialises.
    check(main_->SetClientParent(parent_.get()), "The plug-in does not take the host's parent object");
    check(main_->InitializeClass(), "The plug-in could not be initialised");

    ComPtr<IDispatch> object;
    check(main_->get_ClientReceive(object.put()), "The plug-in takes no data");
    receive_ = asInterface<IClientReceive>(object, "IClientReceive");
    check(main_->get_ClientEscTree(object.put()), "The plug-in has no escape table");
    escTree_ = asInterface<IClientEscTree>(object, "IClientEscTree");
    readTable();
}

void PlugIn::readTable() {
    short count = 0;
    check(escTree_->get_EscTreeCount(&count), "The escape table's size could not be read");
    std::vector<std::string> patterns;
    for (short row = 1; row <= count; ++row) {
        Bstr pattern;
        Bstr description;
        check(escTree_->get_EscTreeString(row, pattern.put()), "A row of the escape table could not be read");
        check(escTree_->get_EscTreeDesc(row, description.put()),
              "A row of the escape table could not be read");
        patterns.push_back(toAnsi(pattern.view()));
        descriptions_.push_back(toAnsi(description.view()));
        if (descriptions_.back() == kSizeDescription) sizeRow_ = row;
        if (descriptions_.back() == kCoverDescription) coverRow_ = row;
    }
    recognizer_.emplace(EscapeTree(patterns), static_cast<EscapeSink&>(*this));
}

std::string PlugIn::identity() const {
    Bstr id;
    Bstr description;
    Bstr version;
    main_->get_PlugInID(id.put());
    main_->get_PlugInDesc(description.put());
    main_->get_PlugInVersion(version.put());
    return toAnsi(id.view()) + ", " + toAnsi(description.view()) + ", version " + toAnsi(version.view());
}

void PlugIn::open() {
    open_ = true;
    check(main_->OnConnection(), "The plug-in could not open its window");
    // This host cannot tell when the user logs in: it takes a connection for a log-in.
    check(main_->OnLogin(), "The plug-in could not log in");
}

void PlugIn::receive(const std::function<std::span<const std::uint8_t>()>& nextPiece) {
    attempt(receive_->ReceiveStart(), "ReceiveStart");
    for (auto piece = nextPiece(); !piece.empty(); piece = nextPiece()) recognizer_->feed(piece);
    attempt(receive_->ReceiveEnd(), "ReceiveEnd");
}

void PlugIn::processCommand(std::string_view text) {
    // Not part of the contract: the terminal has it, other plug-ins need not.
    const auto terminal = window();
    attempt(terminal ? terminal->ProcessCmd(toBstr(text).get(), nullptr) : E_NOINTERFACE, "ProcessCmd");
}

bool PlugIn::sizeScreen(int columns, int rows) {
    if (sizeRow_ == 0) return false;
    const std::string width = std::to_string(columns);
    const std::string height = std::to_string(rows);
    sequence(sizeRow_, std::array<std::string_view, 2>{width, height});
    return true;
}

void PlugIn::plain(std::span<const std::uint8_t> bytes) {
    bool reported = false;
    for (const std::uint8_t byte : bytes) {
        const HRESULT result = receive_->ReceiveData(byte);
        // When one byte fails, the others mostly do too: one report is enough.
        if (FAILED(result) && !std::exchange(reported, true)) attempt(result, "ReceiveData");
    }
}

void PlugIn::sequence(std::int16_t index, std::span<const std::string_view> fields) {
    if (index == coverRow_) observer_.screenCovered();
    const ArgumentArray arguments = toArguments(fields, textsAsShown_);
    SAFEARRAY* array = arguments.get();
    long result = 0;
    const HRESULT processed = escTree_->EscTreeProcess(index, &array, &result);
    const std::string& description = descriptions_[static_cast<std::size_t>(index - 1)];
    if (FAILED(processed))
        attempt(processed, ("Row " + std::to_string(index) + ", " + description + ',').c_str());
    if (index == sizeRow_ && SUCCEEDED(processed)) noteSize(fields);
}

void PlugIn::attempt(HRESULT result, const char* what) {
    if (FAILED(result)) observer_.failed(std::string(what) + " failed: " + failureText(result));
}

void PlugIn::noteSize(std::span<const std::string_view> fields) {
    if (fields.size() < 2) return;
    const std::optional<int> columns = toNumber(fields[0]);
    const std::optional<int> rows = toNumber(fields[1]);
    if (columns && rows) observer_.screenSized(*columns, *rows);
}

}  // namespace kavrelon
