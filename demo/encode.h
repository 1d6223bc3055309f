// Encodes text as the bytes and encoded words that mail programs really sent.
#pragma once
#include "platform/runtime/text.h"

#include <string>

namespace tolvek::sample {

enum class Charset { Iso2022Jp, ShiftJis, EucJp, Utf8 };

std::string label(Charset charset);
std::string encoded(TextView text, Charset charset); // unencodable characters become 〓

std::string base64(std::string_view bytes);         // one line
std::string quotedPrintable(std::string_view line); // one line, soft breaks inside
// ASCII is left unchanged; other text becomes B-encoded words of at most a dozen
// characters each, folded.
std::string headerText(TextView text, Charset charset);

}
