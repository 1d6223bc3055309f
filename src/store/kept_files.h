// Files that are kept for good before something takes their place or they are
// deleted: under a name of their own, numbered (`.Jet`, `.Jet2` ...), none of
// which is ever overwritten. The folder is flushed when these return.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Where `original` is a Jet file, a copy that can't be told from it is there as
// database + ".Jet" when this returns; one that is there already isn't kept twice.
// Any other file: nothing happens.
void keepJetOriginal(const Text& original, const Text& database);

// The same for any file, as database + ".Damaged"; a Jet file as ".Jet". What an
// interrupted run left beside it (`-wal`, `-journal`) is kept with it.
void keepDamaged(const Text& damaged, const Text& database);

// `file` leaves its name: it becomes `wanted`, or `wanted` with a number.
void moveAside(const Text& file, const Text& wanted);

}
