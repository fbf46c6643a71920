#include "samplehost/SessionLog.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/Bytes.h"

namespace kavrelon {
namespace {

TEST(SessionLog, WritesOneReadableLineForEachPiece) {
    const SessionLog::Clock::time_point start;
    std::ostringstream out;
    SessionLog log(out, start);
    log.received(bytesOf("ab\r\n\n\"\\\x1B\xFF"), start + std::chrono::milliseconds(7));
    log.unmatched(bytesOf("\x1B[m"), start + std::chrono::milliseconds(7));
    log.sent(bytesOf(""), start);
    log.command(bytesOf("CUTOK 0"), start);
    log.sent(bytesOf(std::string(81, 'x')), start + std::chrono::milliseconds(61250));
    log.note("connection closed", start + std::chrono::hours(30));
    EXPECT_EQ(out.str(),
              "       0.007 received  \"ab\\r\\n\"\n"
              "       0.007 received  \"\\n\"\n"
              "       0.007 received  \"\\\"\\\\\\x1B\\xFF\"\n"
              "       0.007 unmatched \"\\x1B[m\"\n"
              "       0.000 command   \"CUTOK 0\"\n"
              "      61.250 sent      \"" +
                  std::string(80, 'x') +
                  "\"\n"
                  "      61.250 sent      \"x\"\n"
                  "  108000.000 note      connection closed\n");
}

}  // namespace
}  // namespace kavrelon
