#include "samplehost/TelnetFilter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kavrelon {
namespace {

namespace command {
constexpr std::uint8_t kSubnegotiationEnd = 240;
constexpr std::uint8_t kDataMark = 242;
constexpr std::uint8_t kBreak = 243;
constexpr std::uint8_t kSubnegotiation = 250;
constexpr std::uint8_t kWill = 251;
constexpr std::uint8_t kWont = 252;
constexpr std::uint8_t kDo = 253;
constexpr std::uint8_t kDont = 254;
constexpr std::uint8_t kInterpret = 255;
}  // namespace command

namespace option {
constexpr std::uint8_t kBinary = 0;
constexpr std::uint8_t kEcho = 1;
constexpr std::uint8_t kSuppressGoAhead = 3;
constexpr std::uint8_t kTerminalType = 24;
constexpr std::uint8_t kWindowSize = 31;
}  // namespace option

constexpr std::uint8_t kTerminalTypeIs = 0;
constexpr std::uint8_t kTerminalTypeSend = 1;

/// A longer one is not for us, or its end was lost: the bytes after it are taken as session data again.
constexpr std::size_t kLongestSubnegotiation = 4096;

/// Urgent data without a Data Mark is no Synch: a session must not fall silent for good. A Synch has at most
/// what waits in the system's buffers before its mark.
constexpr std::size_t kMostLeftOut = std::size_t{256} * 1024;

bool weDo(std::uint8_t code) {
    return code == option::kBinary || code == option::kSuppressGoAhead || code == option::kTerminalType ||
           code == option::kWindowSize;
}

bool serverMayDo(std::uint8_t code) {
    return code == option::kBinary || code == option::kSuppressGoAhead || code == option::kEcho;
}

void appendEscaped(std::vector<std::uint8_t>& out, std::uint8_t byte) {
    if (byte == command::kInterpret) out.push_back(byte);
    out.push_back(byte);
}

}  // namespace

TelnetFilter::TelnetFilter(TelnetSettings settings, TelnetSink& sink)
    : settings_(std::move(settings)), sink_(sink) {}

void TelnetFilter::feed(Bytes bytes) {
    auto next = bytes.begin();
    while (next != bytes.end()) {
        if (state_ == State::Data) {
            const auto stop = std::find(next, bytes.end(), command::kInterpret);
            takeData({next, stop});
            next = stop;
            if (next == bytes.end()) return;
            state_ = State::Command;
            ++next;
            continue;
        }
        const std::uint8_t byte = *next++;
        switch (state_) {
            case State::Data:
            case State::Command:
                takeCommand(byte);
                break;
            case State::Option:
                state_ = State::Data;
                negotiate(byte);
                break;
            case State::Subnegotiation:
                takeSubnegotiation(byte);
                break;
            case State::SubnegotiationCommand:
                state_ = State::Subnegotiation;
                if (byte == command::kInterpret) {
                    keepSubnegotiation(byte);
                } else {
                    // Some servers leave out the end and go on with the next command.
                    endSubnegotiation();
                    if (byte != command::kSubnegotiationEnd) takeCommand(byte);
                }
                break;
        }
    }
}

void TelnetFilter::synch() {
    // The mark may be taken before the news of it: that Synch is over.
    if (std::exchange(markCame_, false)) return;
    synching_ = true;
    leftOut_ = 0;
}

void TelnetFilter::takeDataMark() {
    markCame_ = !synching_;
    if (!std::exchange(synching_, false) || leftOut_ == 0) return;
    previous_ = 0;
    sink_.interrupted();
}

/// Passes session bytes on. Outside binary mode the NUL after a single carriage return is only padding, and
/// is left out.
void TelnetFilter::takeData(Bytes data) {
    if (synching_) {
        leftOut_ += data.size();
        if (leftOut_ > kMostLeftOut) takeDataMark();
        return;
    }
    while (!data.empty()) {
        std::size_t length = data.size();
        bool filler = false;
        if (!servers_.test(option::kBinary)) {
            const auto isFiller = [&, before = previous_](std::uint8_t byte) mutable {
                return std::exchange(before, byte) == '\r' && byte == 0;
            };
            length =
                static_cast<std::size_t>(std::find_if(data.begin(), data.end(), isFiller) - data.begin());
            filler = length < data.size();
        }
        if (length > 0) {
            previous_ = data[length - 1];
            sink_.application(data.first(length));
        }
        if (filler) previous_ = 0;
        data = data.subspan(length + (filler ? 1 : 0));
    }
}

void TelnetFilter::takeCommand(std::uint8_t byte) {
    state_ = State::Data;
    if (byte == command::kInterpret) {
        takeData({&byte, 1});
    } else if (byte == command::kDataMark) {
        takeDataMark();
    } else if (byte == command::kSubnegotiation) {
        subnegotiation_.clear();
        state_ = State::Subnegotiation;
    } else if (byte >= command::kWill) {
        verb_ = byte;
        state_ = State::Option;
    }
}

void TelnetFilter::takeSubnegotiation(std::uint8_t byte) {
    if (byte == command::kInterpret) {
        state_ = State::SubnegotiationCommand;
    } else {
        keepSubnegotiation(byte);
    }
}

void TelnetFilter::keepSubnegotiation(std::uint8_t byte) {
    subnegotiation_.push_back(byte);
    if (subnegotiation_.size() > kLongestSubnegotiation) state_ = State::Data;
}

void TelnetFilter::endSubnegotiation() {
    state_ = State::Data;
    const bool asksType = subnegotiation_.size() == 2 && subnegotiation_[0] == option::kTerminalType &&
                          subnegotiation_[1] == kTerminalTypeSend;
    if (!asksType || !ours_.test(option::kTerminalType)) return;
    std::vector<std::uint8_t> content{kTerminalTypeIs};
    content.insert(content.end(), settings_.terminalType.begin(), settings_.terminalType.end());
    sendSubnegotiation(option::kTerminalType, content);
}

void TelnetFilter::negotiate(std::uint8_t code) {
    const bool aboutUs = verb_ == command::kDo || verb_ == command::kDont;
    const bool wanted = verb_ == command::kDo || verb_ == command::kWill;
    OptionSet& side = aboutUs ? ours_ : servers_;
    const bool possible = aboutUs ? weDo(code) : serverMayDo(code);
    if (wanted && !possible) {
        answer(aboutUs ? command::kWont : command::kDont, code);
        return;
    }
    if (side.test(code) == wanted) return;
    side.set(code, wanted);
    if (aboutUs) {
        answer(wanted ? command::kWill : command::kWont, code);
        if (wanted && code == option::kWindowSize) sendWindowSize();
    } else {
        answer(wanted ? command::kDo : command::kDont, code);
    }
}

void TelnetFilter::answer(std::uint8_t verb, std::uint8_t code) {
    sink_.network(std::array{command::kInterpret, verb, code});
}

void TelnetFilter::send(Bytes text, bool crLf) {
    const bool binary = ours_.test(option::kBinary);
    std::vector<std::uint8_t> out;
    out.reserve(text.size() + 1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        appendEscaped(out, text[i]);
        if (text[i] != '\r') continue;
        const bool lone = i + 1 == text.size() || text[i + 1] != '\n';
        if (lone && !binary) out.push_back(0);
        if (!lone && binary && !crLf) ++i;
    }
    if (!out.empty()) sink_.network(out);
}

void TelnetFilter::sendBreak() {
    sink_.network(std::array{command::kInterpret, command::kBreak});
}

void TelnetFilter::setWindowSize(int columns, int lines) {
    const bool changed = columns != settings_.columns || lines != settings_.lines;
    settings_.columns = columns;
    settings_.lines = lines;
    if (changed && ours_.test(option::kWindowSize)) sendWindowSize();
}

void TelnetFilter::sendWindowSize() {
    std::vector<std::uint8_t> content;
    for (const int extent : {settings_.columns, settings_.lines}) {
        content.push_back(static_cast<std::uint8_t>(extent >> 8));
        content.push_back(static_cast<std::uint8_t>(extent & 255));
    }
    sendSubnegotiation(option::kWindowSize, content);
}

void TelnetFilter::sendSubnegotiation(std::uint8_t code, Bytes content) {
    std::vector<std::uint8_t> out{command::kInterpret, command::kSubnegotiation, code};
    for (const std::uint8_t byte : content) appendEscaped(out, byte);
    out.push_back(command::kInterpret);
    out.push_back(command::kSubnegotiationEnd);
    sink_.network(out);
}

bool TelnetFilter::serverEchoes() const {
    return servers_.test(option::kEcho);
}

}  // namespace kavrelon
