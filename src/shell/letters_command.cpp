#include "shell/letters_command.h"

#include "app/guard.h"
#include "app/settings.h"
#include "import/mail_fields.h"
#include "platform/runtime/paths.h"
#include "platform/system/child_program.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

void startLetters(const Text& program, const Text& person)
{
    std::vector<std::string> arguments;
    if (!person.empty()) arguments = {"--person", toUtf8(person)};
    startProgram(existingPath(program), arguments);
}

std::function<void(const Text&, const Text&)> starterInUse = startLetters;

// Dates and filters name no correspondent; nor does the mark of a mail without one.
Text selectedPerson(const frmTolvek& form)
{
    const bool named = gDisplayType == 0 || gDisplayType == 1;
    const Text entry = named ? trim(form.lstNameOrAddr->Text()) : Text();
    return entry == kNoValue ? Text() : entry;
}

}

void findLetters(frmTolvek& form)
{
    const ResumeNext on{u"findLetters"};
    // The help's key is off at the same moments.
    if (!form.memHelp_Top->Enabled()) return;
    const Text program = joinPath(appPath(), fromUtf8(programFileName("TolvekLetters")));
    if (!fileExists(existingPath(program))) return;
    on([&] { starterInUse(program, selectedPerson(form)); });
}

void setLettersStarter(std::function<void(const Text&, const Text&)> starter)
{
    starterInUse = starter ? std::move(starter) : startLetters;
}

}
