// Keeps files for good before they are replaced or deleted. Each gets a name of its
// own, numbered (`.Jet`, `.Jet2` ...); none is ever overwritten. The folder is flushed
// when these return.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// If `original` is a Jet file, an identical copy exists as database + ".Jet" when this
// returns. An identical copy that exists already is used. Does nothing for any other
// file.
void keepJetOriginal(const Text& original, const Text& database);

// The same for any file, as database + ".Damaged"; a Jet file as ".Jet". Journals that
// an interrupted run left beside it (`-wal`, `-journal`) are kept with it.
void keepDamaged(const Text& damaged, const Text& database);

// Renames `file` to `wanted`, or to `wanted` with a number if that name is taken.
void moveAside(const Text& file, const Text& wanted);

}
