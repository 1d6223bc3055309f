#include "converter/text_blocks.h"

#include "converter/plain_text.h"

#include <algorithm>

namespace tolvek {

namespace {

// Sizes in bytes of code page 932.
constexpr std::size_t kLineEnd = 2;
constexpr std::size_t kFull =
    TextBlocks::kBlockSize - 1; // text bytes of a block that is closed by size
constexpr std::size_t kOpen =
    TextBlocks::kBlockSize - 3; // a block up to here still takes a character

// As the reader trims: a TAB is no blank there.
bool isBlank(std::string_view line)
{
    return line.find('\t') == std::string_view::npos && isBlankAnsi(line);
}

// A line that begins like this would end the mail for the reader; a leading blank
// prevents that and keeps the line readable.
bool looksLikeEnd(std::string_view line)
{
    return line.starts_with("<End>");
}

}

void TextBlocks::add(std::string& out, std::string_view line)
{
    if (line.empty()) return addEmpty(out);
    std::string text = looksLikeEnd(line) ? " " + std::string(line) : std::string(line);
    std::string_view rest = text;
    std::string guarded;
    while (!rest.empty()) {
        // A block of blanks alone is dropped by the reader, so it takes no room.
        const std::size_t used = holdsText_ ? size_ : 0;
        const bool fits = used + rest.size() + kLineEnd <= kOpen;
        const std::string_view piece = fits ? rest : wholePrefix(rest, kFull - used);
        if (piece.empty()) return; // half a character at the very end
        addPiece(out, piece);
        rest.remove_prefix(piece.size());
        // Breaking a line may bring an "<End>" to the front.
        if (looksLikeEnd(rest)) {
            guarded = " " + std::string(rest);
            rest = guarded;
        }
    }
}

// An empty line that would exceed the block is left out.
void TextBlocks::addEmpty(std::string& out)
{
    const bool kept = blanks_ + 1 == kBlankRun;
    if (kept && holdsText_ && size_ + kLineEnd > kOpen) return;
    out += "\r\n";
    blanks_ = kept ? 0 : blanks_ + 1;
    if (kept) size_ += kLineEnd;
}

void TextBlocks::addPiece(std::string& out, std::string_view piece)
{
    if (!holdsText_) size_ = 0;
    std::size_t padding = 0;
    if (size_ + piece.size() + kLineEnd > kOpen)
        // Blanks bring the block to exactly byte 4607, where the record cuts off no
        // more than the LF.
        padding = kFull - std::min(kFull, size_ + piece.size());
    out.append(piece).append(padding, ' ').append("\r\n");
    size_ += piece.size() + padding + kLineEnd;
    holdsText_ = holdsText_ || !isBlank(piece);
    blanks_ = 0;
    ++lines_;
    if (lines_ >= kBlockLines || size_ > kBlockSize) close();
}

void TextBlocks::close()
{
    size_ = 0;
    lines_ = 0;
    holdsText_ = false;
}

}
