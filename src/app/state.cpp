#include "app/state.h"

namespace tolvek {

CheckedArray<Text, 6> gStatusLines;
Int16 gBusyFlag;
Int16 gStatusColorFlag;
Int16 gResizeBusy;
Int16 gUnloading;
Int16 gBackUpDisp;
Text gBackUpFile;
Int16 gMailReadCancel;
Int16 gEditCancel;
std::int32_t gPostPetPid = 0;
Text gHelpPath;
CheckedArray<Text, 13> gMonthName;

void fillMonthNames()
{
    static constexpr TextView names[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                         u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    // Element 12 stays empty, as the array is one longer than the year.
    gMonthName = {};
    int month = 0;
    for (TextView name : names)
        gMonthName[month++] = name;
}

void setStatusLines(TextView a, TextView b, TextView c, TextView d, TextView e, TextView f)
{
    const TextView lines[] = {a, b, c, d, e, f};
    for (int i = 0; i < gStatusLines.size(); ++i)
        gStatusLines[i] = lines[i];
}

}
