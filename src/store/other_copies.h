// Whether mails, friends and rules are anywhere else than in a file that is about to go.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Whether one of the dated backups in the program's folder, or of the `.Kept` files
// beside `live`, holds every mail, friend and rule of `database`. Each is read to its end; one that
// can't be read, is a Jet file or only a link to another doesn't count.
bool isHeldElsewhere(const Text& database, const Text& live);

}
