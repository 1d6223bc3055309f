// The commands that take the store as a whole: text dump, load, rebuild.
#pragma once

namespace tolvek {

class frmTolvek;

void memExport_Click(frmTolvek& form);
void memInport_Click(frmTolvek& form);
// Throws all data away, after asking twice; the second question is that of the
// creation, and the success is told whatever its answer was.
void memDBEdit_Click(frmTolvek& form);

// All six tables, and then the box that tells the end; it comes whether or not
// a table failed. Before the load deletes anything, a flushed copy of the
// database stands as Tolvek.Mdb.BeforeLoad (error of the copy: nothing is
// loaded).
void dbUnLoad();
void dbLoad();

}
