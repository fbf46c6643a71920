#include "bench/win32/RealSession.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "plugin/EscapeTable.h"
#include "support/Bytes.h"

namespace kavrelon::bench {
namespace {

std::vector<std::string> patterns() {
    std::vector<std::string> patterns;
    for (std::int16_t row = 1; row <= escapeTable().EscTreeCount(); ++row) {
        patterns.emplace_back(escapeTable().row(row).pattern);
    }
    return patterns;
}

}  // namespace

RealSession::RealSession()
    : settings_((std::filesystem::temp_directory_path() / "kavrelon bench.ini").string()), tree_(patterns()) {
    std::ofstream(settings_, std::ios::binary) << "[Misc]\r\n";
}

RealSession::~RealSession() {
    std::error_code ignored;
    std::filesystem::remove(settings_, ignored);
}

void RealSession::connect() {
    const auto parent = std::make_shared<RecordingParent>();
    parent->iniFile = settings_;
    terminal_.IClientMain_SetClientParent(parent);
    terminal_.IClientMain_InitializeClass();
    terminal_.IClientMain_OnConnection();
    processMessages();
}

void RealSession::size(ScreenExtent extent, Size outer) {
    ShowWindow(window(), SW_RESTORE);
    SetWindowPos(window(), nullptr, 0, 0, outer.width, outer.height, SWP_NOZORDER);
    auto lines = static_cast<std::int16_t>(extent.lines);
    screen().ScreenSize(static_cast<std::int16_t>(extent.columns), lines);
    processMessages();
}

void RealSession::play(std::string_view stream) {
    for (; !stream.empty(); stream.remove_prefix(std::min(stream.size(), kBlock))) {
        recognizer_.feed(bytesOf(stream.substr(0, kBlock)));
        processMessages();
    }
}

void RealSession::sequence(std::int16_t row) {
    sink_.sequence(row, {});
    processMessages();
}

HWND RealSession::window() {
    return FindWindowA(WindowClass::kName, nullptr);
}

}  // namespace kavrelon::bench
