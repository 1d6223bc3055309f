// Backups: moves the mail into a dated file, displays such a file in the main window,
// and returns to the live store.
#pragma once

namespace tolvek {

class frmTolvek;

// Runs once a day, judged by the backup's file name. The backup is complete and flushed
// to disk before the first row of the live store is deleted. After a failure the
// commands stay disabled and the status text stays.
void memBackUp_FileEdit_Click(frmTolvek& form);
void memBackUp_FileSelect_Click(frmTolvek& form);
void memNomalDisp_Click(frmTolvek& form);

}
