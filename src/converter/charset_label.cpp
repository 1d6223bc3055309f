#include "converter/charset_label.h"

#include "converter/ascii.h"

#include <map>

namespace tolvek {

std::string cleanLabel(std::string_view label)
{
    std::string name = lowerAscii(label.substr(0, label.find('*')));
    std::erase_if(name, [](char c) {
        return c == '"' || c == '\'' || isAsciiSpace(static_cast<unsigned char>(c));
    });
    return name;
}

Charset charsetOf(const std::string& name)
{
    static const std::map<std::string, Charset, std::less<>> kNames{
        // No label, or one that says nothing, allows any guess just as ASCII does.
        {"", Charset::Ascii},
        {"us-ascii", Charset::Ascii},
        {"ascii", Charset::Ascii},
        {"ansi_x3.4-1968", Charset::Ascii},
        {"unknown-8bit", Charset::Ascii},
        {"unknown", Charset::Ascii},
        {"x-unknown", Charset::Ascii},
        {"default", Charset::Ascii},
        {"iso-2022-jp", Charset::Iso2022Jp},
        {"csiso2022jp", Charset::Iso2022Jp},
        {"jis", Charset::Iso2022Jp},
        {"iso2022-jp", Charset::Iso2022Jp},
        {"shift_jis", Charset::Ansi},
        {"shift-jis", Charset::Ansi},
        {"x-sjis", Charset::Ansi},
        {"sjis", Charset::Ansi},
        {"windows-31j", Charset::Ansi},
        {"cp932", Charset::Ansi},
        {"ms932", Charset::Ansi},
        {"ms_kanji", Charset::Ansi},
        {"csshiftjis", Charset::Ansi},
        {"windows-932", Charset::Ansi},
        {"x-ms-cp932", Charset::Ansi},
        {"euc-jp", Charset::EucJp},
        {"x-euc-jp", Charset::EucJp},
        {"eucjp", Charset::EucJp},
        {"x-euc", Charset::EucJp},
        {"ujis", Charset::EucJp},
        {"cp51932", Charset::EucJp},
        {"eucjp-ms", Charset::EucJp},
        {"utf-8", Charset::Utf8},
        {"utf8", Charset::Utf8},
        {"unicode-1-1-utf-8", Charset::Utf8}};
    // The variants (iso-2022-jp-1, -3, -ms) differ in their escapes, which the decoder
    // takes as they come.
    if (name.starts_with("iso-2022-jp")) return Charset::Iso2022Jp;
    const auto found = kNames.find(name);
    return found == kNames.end() ? Charset::Other : found->second;
}

bool isWesternName(const std::string& name)
{
    for (const std::string_view beginning :
         {"iso-8859-1", "iso-8859-2", "iso-8859-3", "iso-8859-4", "iso-8859-9", "iso8859-1",
          "latin1", "iso_8859-1", "windows-1250", "windows-1252", "windows-1254", "windows-1257",
          "cp1252"})
        // "iso-8859-1" also covers -10 to -16, of which -11 is Thai.
        if (name.starts_with(beginning)) return !name.ends_with("-11");
    return false;
}

bool isLatin1Name(const std::string& name)
{
    return name == "iso-8859-1" || name == "iso8859-1" || name == "latin1" || name == "iso_8859-1";
}

bool isWideName(const std::string& name)
{
    // The bytes of these can't be judged by tests for single and double bytes.
    return name.starts_with("utf-") || name.starts_with("utf1") || name.starts_with("ucs") ||
           name.starts_with("iso-10646") || name.starts_with("unicode");
}

bool isEasternName(const std::string& name)
{
    for (const std::string_view beginning :
         {"gb", "big5", "euc-", "ks_c", "cp949", "hz", "x-windows-9"})
        if (name.starts_with(beginning)) return true;
    return false;
}

bool isUtf16Name(const std::string& name)
{
    // The names with "le" or "be" state the order and go to ICU.
    return name == "utf-16" || name == "ucs-2" || name == "iso-10646-ucs-2" || name == "unicode";
}

}
