// The commands that act on the store as a whole: text dump, load, rebuild.
#pragma once

namespace tolvek {

class frmTolvek;

void memExport_Click(frmTolvek& form);
void memInport_Click(frmTolvek& form);
// Deletes all data, after asking twice. The second question belongs to the creation;
// success is reported whatever its answer.
void memDBEdit_Click(frmTolvek& form);

// Dump or load all six tables, then show the box that reports the end, even when a
// table failed. A dump replaces all six files or none. Before a load deletes anything,
// a flushed copy of the database is made beside it; if the copy fails, nothing is
// loaded. A load that was cut off is undone by the next start (store/before_load.h).
void dbUnLoad();
void dbLoad();

}
