#include <gtest/gtest.h>

#include "panel/code_page.h"
#include "panel/hex.h"

TEST(HexTest, KeepsTheLowBitsAndReadsUpToTheFirstOtherCharacter) {
  EXPECT_EQ(HexByte(5), "05");
  EXPECT_EQ(HexByte(256), "00");
  EXPECT_EQ(HexByte(-1), "FF");
  EXPECT_EQ(HexWord(0x9FC0), "9FC0");
  EXPECT_EQ(HexWord(-2), "FFFE");
  EXPECT_EQ(ParseHexByte("fFA"), 255);
  EXPECT_EQ(ParseHexByte("7]"), 7);
  for (const char* none : {"", "G1", "-1", "+1", " 1", "0x"}) EXPECT_EQ(ParseHexByte(none), 0);
  EXPECT_EQ(ParseHexWord("FFFF0"), 65535);
  EXPECT_EQ(ParseHexWord("12G4"), 0x12);
}

TEST(CodePageTest, EveryByteSurvivesAndForeignCharactersAreMarked) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(FromUnicode(ToUnicode(all)), all);
  EXPECT_EQ(ToUnicode("\x80 \x9F \xE9"), QString::fromUtf8("€ Ÿ é"));
  EXPECT_EQ(FromUnicode(QString::fromUtf8("→Ω€")), "??\x80");
  EXPECT_EQ(FromUnicode(QString(QChar(0x92))), "?") << "a control character, not an apostrophe";
}
