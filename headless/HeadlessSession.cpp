#include "headless/HeadlessSession.h"

#include <utility>

#include "plugin/EscapeTable.h"

namespace kavrelon {

const EscapeTree& HeadlessSession::escapeTree() {
    static const EscapeTree tree = [] {
        Texts patterns;
        for (std::int16_t row = 1; row <= escapeTable().EscTreeCount(); ++row) {
            patterns.emplace_back(escapeTable().row(row).pattern);
        }
        return EscapeTree(patterns);
    }();
    return tree;
}

void HeadlessSession::connect() {
    terminal->IClientMain_SetClientParent(parent);
    terminal->IClientMain_InitializeClass();
    terminal->IClientMain_OnConnection();
}

void HeadlessSession::renew() {
    recognizer_.reset();
    sink_.reset();
    // What happens during its end must not find it any more.
    auto last = std::exchange(terminal, std::make_unique<clsTerminal>(platform, kVersion));
    last.reset();
}

void HeadlessSession::feed(std::span<const std::uint8_t> block) {
    // Made for the first block: most sessions never see one, and the tree takes its time.
    if (!recognizer_) recognizer_.emplace(escapeTree(), sink_.emplace(*this));
    recognizer_->feed(block);
}

void HeadlessSession::type(std::string_view bytes) const {
    for (const char byte : bytes) terminal->IClientReceive_ReceiveData(static_cast<std::uint8_t>(byte));
}

void HeadlessSession::sequence(int row, const Texts& fields, int lowerBound) const {
    const std::vector<std::string_view> views(fields.begin(), fields.end());
    terminal->IClientEscTree_EscTreeProcess(static_cast<std::int16_t>(row),
                                            EscapeArguments(views, lowerBound));
}

HeadlessWindow& HeadlessSession::window() const {
    HeadlessWindow* const window = platform.windowOf(form());
    if (window == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
    return *window;
}

std::uint8_t HeadlessSession::stored(int column, int row) const {
    return screen().buffer().record(row + 1).Chars(column + 1);
}

}  // namespace kavrelon
