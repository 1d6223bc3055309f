// One mail of the sample, in mbox format.
#pragma once
#include "demo/encode.h"
#include "demo/letters.h"

#include <chrono>
#include <string>

namespace tolvek::sample {

enum class DateStyle {
    Internet,
    NoDayName,
    TwoDigitYear,
    ThreeDigitYear,
    Clock,
    Slashes,
    NamedZone,
    NoSeconds,
    Missing
};
enum class NameStyle { Angle, Comment, RawAngle };
enum class Transfer { Plain, Base64, QuotedPrintable };

struct SampleMail {
    Person from, to;
    Letter letter;
    std::chrono::sys_seconds time; // the sender's local time
    Charset charset = Charset::Iso2022Jp;
    Transfer transfer = Transfer::Plain;
    DateStyle dateStyle = DateStyle::Internet;
    NameStyle nameStyle = NameStyle::Angle;
    bool mimeHeaders = true; // if false, the reader must guess the charset
};

// The separator line, the header, the body and an empty line.
std::string mboxText(const SampleMail& mail);

}
