// The reply button of the main window.
#pragma once

namespace tolvek {

class frmTolvek;

// Replies to the selected mail; does nothing while no subject is selected.
void comSendMail_Click(frmTolvek& form);

}
