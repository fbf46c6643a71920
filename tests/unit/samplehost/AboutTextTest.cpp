#include "samplehost/AboutText.h"

#include <gtest/gtest.h>

namespace kavrelon {
namespace {

TEST(AboutText, TellsWhatIsKnown) {
    AboutFacts facts{"1.2.3",     "1.2.4",  "C:\\k.dll", "TERM, version 1.2.4",
                     "C:\\s.ini", "office", "C:\\s.log", {}};
    const std::string rest =
        "\nPlug-in:\nTERM, version 1.2.4\n\nSettings "
        "file:\nC:\\s.ini\n\nProfile:\noffice\n\nLog:\nC:\\s.log\n";
    EXPECT_EQ(aboutText(facts), "Kavrelon sample host 1.2.3\n\nLibrary 1.2.4:\nC:\\k.dll\n" + rest);
    facts.libraryFile.clear();
    facts.recordFile = "C:\\s.rec";
    EXPECT_EQ(aboutText(facts), "Kavrelon sample host 1.2.3\n" + rest + "\nRecording:\nC:\\s.rec\n");
}

}  // namespace
}  // namespace kavrelon
