#include "samplehost/SessionRecording.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace kavrelon {
namespace {

constexpr std::string_view kFirstLine = "kavrelon recording 1\n";

/// Takes a number and the character after it off the front.
bool takeNumber(std::string_view& text, char after, unsigned& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop == end || *stop != after) return false;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()) + 1);
    return true;
}

}  // namespace

SessionRecorder::SessionRecorder(std::ostream& out, Clock::time_point start) : out_(out), start_(start) {
    out_ << kFirstLine;
}

void SessionRecorder::received(std::string_view bytes, Clock::time_point now) {
    const auto at = std::chrono::duration_cast<std::chrono::milliseconds>(now - start_);
    out_ << at.count() << ' ' << bytes.size() << '\n' << bytes;
    out_.flush();
}

SessionRecording::SessionRecording(std::string file) : paced_(file.starts_with(kFirstLine)) {
    if (paced_) {
        takePieces(std::string_view(file).substr(kFirstLine.size()));
    } else {
        bytes_ = std::move(file);
    }
}

void SessionRecording::takePieces(std::string_view rest) {
    unsigned at = 0;
    unsigned length = 0;
    while (takeNumber(rest, ' ', at) && takeNumber(rest, '\n', length)) {
        const std::string_view piece = rest.substr(0, length);
        bytes_ += piece;
        pieces_.push_back({std::chrono::milliseconds(at), bytes_.size()});
        rest.remove_prefix(piece.size());
    }
}

std::size_t SessionRecording::dueAt(std::chrono::milliseconds time) const {
    if (!paced_) return bytes_.size();
    // In the file's order, whatever its times: what is due once stays due.
    const auto later =
        std::find_if(pieces_.begin(), pieces_.end(), [time](const Piece& piece) { return piece.at > time; });
    return later == pieces_.begin() ? 0 : std::prev(later)->end;
}

}  // namespace kavrelon
