#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/PictureName.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

TEST(PictureName, OnlyAPlainFileNameIsAccepted) {
    const std::vector<std::string> accepted{"logo.bmp",     "LOGO",
                                            "a b.c.png",    ".hidden",
                                            "sch\xF6n.jpg", "x;y.gif",
                                            "console.png",  "COMPANY.bmp",
                                            "LPT.bmp",      "com10.gif",
                                            "nul1.bmp",     "~1.ico",
                                            "%41.png",      std::string(255, 'a'),
                                            "#1.wmf",       "null.tar.gz",
                                            "my-com1",      "\xE9.png"};
    for (const std::string& name : accepted) EXPECT_TRUE(isPlainFileName(name)) << name;

    const std::vector<std::string> refused{"",
                                           ".",
                                           "..",
                                           "...",
                                           "a.",
                                           "a ",
                                           " ",
                                           "a. .",
                                           std::string(256, 'a'),
                                           "/etc/passwd",
                                           "..\\a.bmp",
                                           "a/b",
                                           "a\\b",
                                           "\\a",
                                           "\\\\host\\share\\a.bmp",
                                           "//host/a",
                                           "\\\\?\\C:\\a",
                                           "\\\\.\\COM1",
                                           "C:\\a.bmp",
                                           "C:a.bmp",
                                           "c:",
                                           "a.bmp:stream",
                                           "a.bmp::$DATA",
                                           "file:a.bmp",
                                           "http://host/a.bmp",
                                           "data:,a",
                                           "CON",
                                           "con.bmp",
                                           "Nul",
                                           "NUL .txt",
                                           "nul.tar.gz",
                                           "aux",
                                           "PRN.x",
                                           "COM1",
                                           "com9.bmp",
                                           "LPT0",
                                           "lpt1 .png",
                                           "COM\xB9",
                                           "com\xC2\xB3.png",
                                           "CONIN$",
                                           "conout$.bmp",
                                           "clock$",
                                           "*.bmp",
                                           "a?.bmp",
                                           "a\"b",
                                           "<a>",
                                           "a|b",
                                           "a\nb",
                                           "a\tb",
                                           "a\0b"s,
                                           "a\x7F"};
    for (const std::string& name : refused) EXPECT_FALSE(isPlainFileName(name)) << name;
}

}  // namespace
}  // namespace kavrelon
