// The commands that take the store as a whole: text dump, load, rebuild.
#pragma once

namespace tolvek {

class frmTolvek;

void memExport_Click(frmTolvek& form);
void memInport_Click(frmTolvek& form);
// Throws all data away, after asking twice; the second question is that of the
// creation, and the success is told whatever its answer was.
void memDBEdit_Click(frmTolvek& form);

// All six tables, and then the box that reports the end; it comes whether or not
// a table failed. An unload puts all six files in place or none. Before a load
// deletes anything, a flushed copy of the database is beside it (an error of the
// copy: nothing is loaded), and a load that is cut off is taken back by the next
// start (store/before_load.h).
void dbUnLoad();
void dbLoad();

}
