// An archive of an earlier version in which one character of a subject is zeroed.
#pragma once
#include "platform/runtime/text.h"
#include "support/temp_folder.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

namespace tolvek::test {

inline constexpr TextView kOneSpoiltText =
    u"元のデータベースに，壊れた文字のある項目が 1 個ありました。\r\n"
    u"   その部分は読めません。元のファイルはそのまま残っています。";

inline std::string jetWithZeroedText()
{
    const std::filesystem::path jet = std::filesystem::path(TOLVEK_TEST_DATA) / "jet";
    std::string bytes = readBytes(jet / "v210_apostrophe_jet4.mdb");
    const std::string subject("o\0n\0'\0t\0", 8);
    const std::size_t at = bytes.find(subject);
    EXPECT_NE(at, std::string::npos);
    if (at != std::string::npos) bytes[at + 2] = '\0';
    return bytes;
}

}
