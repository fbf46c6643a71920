#include "htmllabel/com/SavedProperties.h"

#include <oleauto.h>

#include <cstring>
#include <utility>

#include "support/com/ComCall.h"
#include "support/com/ComText.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

/// Visits the properties in the order of saving, with their names and their counterparts in another set.
template <class Properties, class Visitor>
void visit(Properties& properties, const HTMLLabelProperties& others, Visitor&& visitor) {
    using P = HTMLLabelProperties;
    const auto each = [&](const wchar_t* name, auto P::*member) {
        visitor(name, properties.*member, others.*member);
    };
    each(L"Appearance", &P::Appearance);
    each(L"BorderStyle", &P::BorderStyle);
    each(L"BackColor", &P::BackColor);
    each(L"EnableAnchors", &P::EnableAnchors);
    each(L"EnableScroll", &P::EnableScroll);
    each(L"EnableTooltips", &P::EnableTooltips);
    each(L"DefaultFontName", &P::DefaultFontName);
    each(L"DefaultFontSize", &P::DefaultFontSize);
    each(L"UnderlineLinks", &P::UnderlineLinks);
    each(L"DefaultPadding", &P::DefaultPadding);
    each(L"DefaultSpacing", &P::DefaultSpacing);
}

/// The set with defaults in place of invalid values: programs may set anything, but a saved set must be
/// readable again.
HTMLLabelProperties readable(const HTMLLabelProperties& properties) {
    HTMLLabelProperties result = HTMLLabelProperties::whenNotSaved();
    visit(result, properties, [&](const wchar_t*, auto& value, const auto& wanted) {
        auto byDefault = std::exchange(value, wanted);
        if (!result.isValid()) value = std::move(byDefault);
    });
    return result;
}

// How a variant holds each type of property. Colours are signed there, as containers expect.

constexpr VARTYPE variantType(std::int16_t) {
    return VT_I2;
}
constexpr VARTYPE variantType(Colour) {
    return VT_I4;
}
constexpr VARTYPE variantType(bool) {
    return VT_BOOL;
}
constexpr VARTYPE variantType(float) {
    return VT_R4;
}
VARTYPE variantType(const std::string&) {
    return VT_BSTR;
}

void fromVariant(const VARIANT& from, std::int16_t& value) {
    value = from.iVal;
}
void fromVariant(const VARIANT& from, Colour& value) {
    value = static_cast<Colour>(from.lVal);
}
void fromVariant(const VARIANT& from, bool& value) {
    value = from.boolVal != VARIANT_FALSE;
}
void fromVariant(const VARIANT& from, float& value) {
    value = from.fltVal;
}
void fromVariant(const VARIANT& from, std::string& value) {
    value = toAnsi(bstrView(from.bstrVal));
}

void toVariant(std::int16_t value, VARIANT& to) {
    to.iVal = value;
}
void toVariant(Colour value, VARIANT& to) {
    to.lVal = static_cast<LONG>(value);
}
void toVariant(bool value, VARIANT& to) {
    to.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}
void toVariant(float value, VARIANT& to) {
    to.fltVal = value;
}
void toVariant(const std::string& value, VARIANT& to) {
    to.bstrVal = toBstr(value).detach();
}

void logBadEntry(IErrorLog* log, const wchar_t* name) {
    if (log == nullptr) return;
    constexpr HRESULT kInvalidPropertyValue = static_cast<HRESULT>(0x800A017CU);
    const Bstr source(L"kavrelon.HTMLLabel");
    const Bstr description(L"Invalid property value (" + std::wstring(name) + L")");
    EXCEPINFO error{};
    error.scode = kInvalidPropertyValue;
    error.bstrSource = source.get();
    error.bstrDescription = description.get();
    log->AddError(name, &error);
}

constexpr std::uint32_t kSignature = 0x4C48564B;  // "KVHL"
constexpr std::uint16_t kVersion = 1;
constexpr std::uint32_t kLargestBody = 0x10000;

struct Header {
    std::uint32_t signature;
    std::uint32_t version;
    std::uint32_t bodySize;
};

template <class Value>
void append(std::string& bytes, const Value& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}
void append(std::string& bytes, const std::string& value) {
    append(bytes, static_cast<std::uint16_t>(value.size()));
    bytes += value;
}

[[noreturn]] void failDamaged() {
    throw ComError(STG_E_DOCFILECORRUPT);
}

std::string_view takeBytes(std::string_view& bytes, std::size_t size) {
    if (bytes.size() < size) failDamaged();
    const std::string_view taken = bytes.substr(0, size);
    bytes.remove_prefix(size);
    return taken;
}

template <class Value>
void take(std::string_view& bytes, Value& value) {
    std::memcpy(&value, takeBytes(bytes, sizeof value).data(), sizeof value);
}
void take(std::string_view& bytes, bool& value) {
    value = takeBytes(bytes, sizeof value).front() != 0;
}
void take(std::string_view& bytes, std::string& value) {
    std::uint16_t size = 0;
    take(bytes, size);
    value = takeBytes(bytes, size);
}

std::string readExactly(IStream& stream, std::size_t size) {
    std::string bytes(size, '\0');
    ULONG read = 0;
    throwIfFailed(stream.Read(bytes.data(), static_cast<ULONG>(size), &read));
    if (read != size) failDamaged();
    return bytes;
}

}  // namespace

HTMLLabelProperties loadProperties(IPropertyBag& bag, IErrorLog* log) {
    HTMLLabelProperties properties = HTMLLabelProperties::whenNotSaved();
    visit(properties, HTMLLabelProperties::whenNotSaved(),
          [&](const wchar_t* name, auto& value, auto& byDefault) {
              Variant entry;
              // The type that the bag is asked for; it may answer with another one.
              entry.vt = variantType(value);
              if (FAILED(bag.Read(name, &entry, log)) || entry.vt == VT_EMPTY) return;
              const bool isOfType = SUCCEEDED(changeType(entry, entry, variantType(value)));
              if (isOfType) fromVariant(entry, value);
              if (isOfType && properties.isValid()) return;
              value = byDefault;
              logBadEntry(log, name);
          });
    return properties;
}

void saveProperties(const HTMLLabelProperties& properties, IPropertyBag& bag, bool all) {
    const HTMLLabelProperties saved = readable(properties);
    visit(saved, HTMLLabelProperties::whenNotSaved(),
          [&](const wchar_t* name, const auto& value, const auto& byDefault) {
              if (!all && value == byDefault) return;
              Variant entry;
              toVariant(value, entry);
              entry.vt = variantType(value);
              throwIfFailed(bag.Write(name, &entry));
          });
}

std::string encodeProperties(const HTMLLabelProperties& properties) {
    std::string body;
    const HTMLLabelProperties saved = readable(properties);
    visit(saved, saved, [&](const wchar_t*, const auto& value, const auto&) { append(body, value); });
    std::string bytes;
    append(bytes, Header{kSignature, kVersion, static_cast<std::uint32_t>(body.size())});
    return bytes + body;
}

HTMLLabelProperties decodeProperties(IStream& stream) {
    Header header{};
    const std::string headerBytes = readExactly(stream, sizeof header);
    std::memcpy(&header, headerBytes.data(), sizeof header);
    if (header.signature != kSignature || header.version != kVersion || header.bodySize > kLargestBody) {
        failDamaged();
    }
    const std::string body = readExactly(stream, header.bodySize);
    std::string_view rest = body;
    HTMLLabelProperties properties;
    visit(properties, properties, [&](const wchar_t*, auto& value, const auto&) { take(rest, value); });
    if (!rest.empty() || !properties.isValid()) failDamaged();
    return properties;
}

}  // namespace kavrelon
