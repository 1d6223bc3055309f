// What makes two names of files or settings the same name.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Case gone, character by character (so that no name gets longer), kana
// composed with their voicing marks, and twins in their Windows forms, which is
// how the settings file gives back a folder's name. For comparison only, never
// to be shown.
Text foldedName(TextView name);

}
