// Backups: the mail moves into a dated file of its own, any such file is looked
// at through the main window, and the live store comes back.
#pragma once

namespace tolvek {

class frmTolvek;

// Once a day, by the file's existence. The backup is complete and on the disk
// before the first row of the live store is deleted. A failure leaves the
// commands off and the status text in place.
void memBackUp_FileEdit_Click(frmTolvek& form);
void memBackUp_FileSelect_Click(frmTolvek& form);
void memNomalDisp_Click(frmTolvek& form);

}
