// The reply button of the main window.
#pragma once

namespace tolvek {

class frmTolvek;

// Does nothing while no subject is selected.
void comSendMail_Click(frmTolvek& form);

}
