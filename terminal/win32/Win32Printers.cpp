#include "terminal/win32/Win32Printers.h"

#include <windows.h>

#include <winspool.h>

#include <array>

#include "gdi/GdiHandles.h"
#include "gdi/LogFont.h"
#include "support/win32/SystemLibrary.h"
#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

constexpr const wchar_t* kSpooler = L"winspool.drv";
constexpr const char* kJobName = "Terminal screen";

Font pageFont(HDC context, int columns, int lines) {
    const Size page{GetDeviceCaps(context, HORZRES), GetDeviceCaps(context, VERTRES)};
    const Size cell = printedCell(page, columns, lines);
    LOGFONTA description = logFont({}, cell.height);
    description.lfWidth = cell.width;
    description.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    return Font(CreateFontIndirectA(&description));
}

void drawLines(HDC context, const std::vector<std::string>& lines) {
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    int y = 0;
    for (const std::string& line : lines) {
        std::wstring shown;
        for (const char c : line) shown += oemCharacters()[static_cast<unsigned char>(c)];
        TextOutW(context, 0, y, shown.c_str(), static_cast<int>(shown.size()));
        y += metrics.tmHeight;
    }
}

}  // namespace

std::vector<std::string> Win32Printers::names() {
    constexpr DWORD kWhich = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
    const SystemLibrary spooler(kSpooler);
    auto* const enumerate = spooler.find<decltype(EnumPrintersA)>("EnumPrintersA");
    if (enumerate == nullptr) return {};
    DWORD bytes = 0;
    DWORD count = 0;
    enumerate(kWhich, nullptr, 4, nullptr, 0, &bytes, &count);
    // The structures are at the front of the buffer, which is aligned for them.
    std::vector<PRINTER_INFO_4A> buffer(bytes / sizeof(PRINTER_INFO_4A) + 1);
    const DWORD room = static_cast<DWORD>(buffer.size()) * sizeof(PRINTER_INFO_4A);
    if (!enumerate(kWhich, nullptr, 4, reinterpret_cast<BYTE*>(buffer.data()), room, &bytes, &count)) {
        return {};
    }
    std::vector<std::string> names;
    for (DWORD i = 0; i < count; ++i) names.emplace_back(buffer[i].pPrinterName);
    return names;
}

std::string Win32Printers::defaultName() {
    const SystemLibrary spooler(kSpooler);
    auto* const ask = spooler.find<decltype(GetDefaultPrinterA)>("GetDefaultPrinterA");
    std::array<char, 512> name{};
    auto length = static_cast<DWORD>(name.size());
    return ask != nullptr && ask(name.data(), &length) ? std::string(name.data()) : std::string();
}

bool Win32Printers::print(const std::string& printer, const std::vector<std::string>& lines, int columns) {
    const OwnedContext context(CreateDCA("WINSPOOL", printer.c_str(), nullptr, nullptr));
    if (context == nullptr) return false;
    DOCINFOA job{};
    job.cbSize = sizeof job;
    job.lpszDocName = kJobName;
    if (StartDocA(context.get(), &job) <= 0) return false;
    if (StartPage(context.get()) <= 0) {
        AbortDoc(context.get());
        return false;
    }
    const Font font = pageFont(context.get(), columns, static_cast<int>(lines.size()));
    {
        const Selected selected(context.get(), font.get());
        drawLines(context.get(), lines);
    }
    return EndPage(context.get()) > 0 && EndDoc(context.get()) > 0;
}

}  // namespace kavrelon
