// What the long commands of the main window have in common. Each step is a
// statement of its caller's routine: a failed one is told under the caller's
// name, and the next one follows.
#pragma once

namespace tolvek {

class ResumeNext;
class frmTolvek;

// The mail text, the heading above it and the subjects.
void emptyPanes(const ResumeNext& on, frmTolvek& form);

// The end of the work: the status text goes, the commands come back on as far
// as the store on display lets them. Where the focus goes is the caller's.
void endWork(const ResumeNext& on, frmTolvek& form);

}
