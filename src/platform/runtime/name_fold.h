// Folds names of files and settings for comparison.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Removes case, character by character (so that no name gets longer), composes kana
// with their voicing marks, and replaces twins by their Windows forms, in which the
// settings file returns a folder's name. For comparison only, never for display.
Text foldedName(TextView name);

}
