#include "samplehost/SessionLog.h"

#include <algorithm>
#include <cstdio>

namespace kavrelon {
namespace {

/// Long pieces without line feeds are cut, so that the log stays readable.
constexpr std::size_t kLongestPiece = 80;

void writeEscaped(std::ostream& out, SessionLog::Bytes bytes) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    for (const std::uint8_t byte : bytes) {
        const char c = static_cast<char>(byte);
        switch (c) {
            case '\r':
                out << "\\r";
                break;
            case '\n':
                out << "\\n";
                break;
            case '"':
            case '\\':
                out << '\\' << c;
                break;
            default:
                if (byte >= 32 && byte < 127) {
                    out << c;
                } else {
                    out << "\\x" << kHex[byte >> 4] << kHex[byte & 15];
                }
        }
    }
}

/// How many bytes go into the next line: up to a line feed.
std::size_t pieceLength(SessionLog::Bytes bytes) {
    const SessionLog::Bytes head = bytes.first(std::min(bytes.size(), kLongestPiece));
    const auto lineFeed = std::find(head.begin(), head.end(), '\n');
    return static_cast<std::size_t>(lineFeed - head.begin()) + (lineFeed == head.end() ? 0 : 1);
}

}  // namespace

SessionLog::SessionLog(std::ostream& out, Clock::time_point start) : out_(out), start_(start) {}

void SessionLog::received(Bytes bytes, Clock::time_point now) {
    writePieces("received  ", bytes, now);
}

void SessionLog::sent(Bytes bytes, Clock::time_point now) {
    writePieces("sent      ", bytes, now);
}

void SessionLog::command(Bytes text, Clock::time_point now) {
    writePieces("command   ", text, now);
}

void SessionLog::unmatched(Bytes bytes, Clock::time_point now) {
    writePieces("unmatched ", bytes, now);
}

void SessionLog::note(std::string_view text, Clock::time_point now) {
    writeTime(now);
    out_ << "note      " << text << '\n';
    out_.flush();
}

void SessionLog::writePieces(std::string_view label, Bytes bytes, Clock::time_point now) {
    while (!bytes.empty()) {
        const std::size_t length = pieceLength(bytes);
        writeTime(now);
        out_ << label << '"';
        writeEscaped(out_, bytes.first(length));
        out_ << "\"\n";
        bytes = bytes.subspan(length);
    }
    out_.flush();
}

void SessionLog::writeTime(Clock::time_point now) {
    char text[32];
    const std::chrono::duration<double> seconds = now - start_;
    std::snprintf(text, sizeof text, "%12.3f ", seconds.count());
    out_ << text;
}

}  // namespace kavrelon
