#include "converter/mail_text.h"

#include "converter/ascii.h"
#include "converter/content_type.h"
#include "converter/encoded_words.h"
#include "converter/further_part.h"
#include "converter/mime_parts.h"
#include "converter/plain_text.h"
#include "converter/text_part.h"

#include <array>
#include <vector>

namespace tolvek {

namespace {

// What the parts of a mail contribute: plain lines in code page 932, each with LF.
struct Letter {
    std::string text;          // of the letter itself
    std::string attachedText;  // the first text among the attachments
    std::string attachedMails; // with their main fields
    std::string furtherParts;  // one line each
};

constexpr int kDeepest = 20; // parts within parts; real mails are far below

enum class PartKind { Text, Html, Message, Report, Other };

PartKind kindOf(const std::string& type)
{
    if (type == "text/html") return PartKind::Html;
    // A type without "/" is broken, and a multipart without parts is read as the text
    // that it is.
    if (type.empty() || type == "text/plain" || type == "text/enriched" ||
        type == "text/richtext" || type.find('/') == std::string::npos ||
        type.starts_with("multipart/"))
        return PartKind::Text;
    if (type == "message/rfc822" || type == "message/partial" || type == "message/news" ||
        type == "message/global")
        return PartKind::Message;
    return type.starts_with("message/") || type == "text/rfc822-headers" ? PartKind::Report
                                                                         : PartKind::Other;
}

Text fieldLine(TextView label, const HeaderFields& fields, std::string_view name)
{
    const Text value = decodeEncodedWords(unfoldedText(fields.value(name)));
    return value.empty() ? Text() : Text(label) + u": " + value + u"\n";
}

class LetterReader {
public:
    void visit(const HeaderFields& fields, std::string_view body, int depth)
    {
        const ContentType content = parseContentType(fields.value("content-type"));
        const auto parts =
            depth < kDeepest ? partsOf(fields, content, body) : std::vector<std::string_view>();
        if (parts.empty())
            offer(fields, content, body, depth);
        else if (content.type == "multipart/alternative")
            takeOne(parts, depth);
        else
            for (const std::string_view raw : parts) {
                const RawPart part = splitPart(raw);
                visit(HeaderFields(part.head), part.body, depth + 1);
            }
    }

    Letter letter;

private:
    // Of the alternatives the plain text, else the last one that has text: they are
    // ordered from the poorest to the richest.
    void takeOne(const std::vector<std::string_view>& parts, int depth)
    {
        std::string chosen;
        bool plainChosen = false;
        for (const std::string_view raw : parts) {
            const RawPart part = splitPart(raw);
            const HeaderFields fields(part.head);
            LetterReader form;
            // The other alternatives are still visited, for their attachments.
            form.skipsHtml_ = plainChosen || skipsHtml_;
            form.visit(fields, part.body, depth + 1);
            takeRest(form.letter);
            const bool plain =
                kindOf(parseContentType(fields.value("content-type")).type) == PartKind::Text &&
                !form.hasHtml_;
            if (isBlankAnsi(form.letter.text) || plainChosen) continue;
            chosen = std::move(form.letter.text);
            plainChosen = plain;
        }
        append(std::move(chosen));
    }

    void takeRest(const Letter& form)
    {
        if (letter.attachedText.empty()) letter.attachedText = form.attachedText;
        letter.attachedMails += form.attachedMails;
        letter.furtherParts += form.furtherParts;
    }

    void offer(const HeaderFields& fields, const ContentType& content, std::string_view body,
               int depth)
    {
        const PartKind kind = kindOf(content.type);
        // A mail that is one single part is the letter itself, whatever name or
        // disposition it has.
        const Text name = depth > 0 ? partName(fields, content) : Text();
        const bool attached =
            !name.empty() ||
            lowerAscii(fields.value("content-disposition")).starts_with("attachment");
        const bool isText = kind == PartKind::Text || kind == PartKind::Html;
        const bool isOwn = isText && (!attached || depth == 0);
        if (isOwn && kind == PartKind::Html && skipsHtml_) return;
        if (isOwn)
            append(read(fields, content, body));
        else if (kind == PartKind::Message && depth < kDeepest)
            takeMail(fields, body, depth);
        else if (kind == PartKind::Report)
            takeReport(fields, content, body);
        else
            takeFurther(fields, content, body, name, isText);
    }

    std::string read(const HeaderFields& fields, const ContentType& content, std::string_view body)
    {
        TextPart part = readTextPart(fields, content, body);
        hasHtml_ = hasHtml_ || part.html;
        for (const UuencodedFile& file : part.files)
            addLine(decodeEncodedWords(unfoldedText(file.name)), "application/octet-stream",
                    file.size);
        return std::move(part.lines);
    }

    // Some programs send plain text and HTML of the same letter as ordinary parts.
    void append(std::string lines)
    {
        if (isBlankAnsi(lines)) return;
        if (hasHtml_ && !letter.text.empty() && isRepeated(lines)) return;
        if (letter.text.empty())
            letter.text = std::move(lines);
        else
            letter.text += lines;
    }

    // Counting continues from where it ended, so that many parts cost no more than one
    // large one. The texts are compared only if their lengths match.
    bool isRepeated(std::string_view lines)
    {
        solidSize_ += withoutBlanks(std::string_view(letter.text).substr(counted_)).size();
        counted_ = letter.text.size();
        const std::string solid = withoutBlanks(lines);
        return solid.size() == solidSize_ && solid == withoutBlanks(letter.text);
    }

    void takeMail(const HeaderFields& fields, std::string_view body, int depth)
    {
        const std::string encoding = fields.value("content-transfer-encoding");
        const std::string bytes = isCoded(encoding) ? decodeBody(body, encoding) : std::string();
        std::string_view message = bytes.empty() ? body : std::string_view(bytes);
        // Blank lines before the head would end it.
        message.remove_prefix(std::min(message.find_first_not_of("\r\n"), message.size()));
        const RawPart mail = splitPart(message);
        const HeaderFields head(mail.head);
        LetterReader inner;
        inner.visit(head, mail.body, depth + 1);
        appendPlainLines(letter.attachedMails, u"（添付メール）\n" +
                                                   fieldLine(u"From", head, "from") +
                                                   fieldLine(u"Date", head, "date") +
                                                   fieldLine(u"Subject", head, "subject") + u"\n");
        letter.attachedMails +=
            inner.letter.text.empty() ? inner.letter.attachedText : inner.letter.text;
        letter.attachedMails += inner.letter.attachedMails;
        letter.furtherParts += inner.letter.furtherParts;
    }

    void takeReport(const HeaderFields& fields, const ContentType& content, std::string_view body)
    {
        letter.attachedMails += readTextPart(fields, content, body).lines;
    }

    void takeFurther(const HeaderFields& fields, const ContentType& content, std::string_view body,
                     const Text& name, bool isText)
    {
        const std::string encoding = fields.value("content-transfer-encoding");
        addLine(name, content.type.empty() ? "text/plain" : content.type,
                decodedSize(body, encoding));
        const bool readable = isText || content.type.starts_with("text/");
        // Only the first is kept: it serves if the mail has no other text.
        if (readable && letter.attachedText.empty())
            letter.attachedText = readTextPart(fields, content, body).lines;
    }

    void addLine(const Text& name, std::string_view type, std::size_t size)
    {
        appendPlainLines(letter.furtherParts, furtherPartLine(name, type, size));
    }

    bool hasHtml_ = false;
    std::size_t solidSize_ = 0; // bytes of the text without blanks, up to `counted_`
    std::size_t counted_ = 0;
    bool skipsHtml_ = false; // a plain alternative was chosen already
};

Letter readLetter(const HeaderFields& fields, std::string_view body)
{
    LetterReader reader;
    reader.visit(fields, body, 0);
    return std::move(reader.letter);
}

}

std::string mailText(const HeaderFields& fields, std::string_view body)
{
    Letter letter = readLetter(fields, body);
    // A text among the attachments serves only if the letter has none.
    std::string lines = std::move(letter.text.empty() ? letter.attachedText : letter.text);
    if (isBlankAnsi(lines)) {
        lines.clear();
        // An attached mail is text enough.
        if (letter.attachedMails.empty()) appendPlainLines(lines, kNoText);
    }
    return std::move(lines.append(letter.attachedMails).append(letter.furtherParts));
}

}
