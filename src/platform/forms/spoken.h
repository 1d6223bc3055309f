// What a screen reader finds beyond the toolkit's own words: forms are windows and
// dialogs, a label that can be clicked is a button, and lines and pictures are what they
// are.
#pragma once

namespace tolvek {

// Called before the first form is shown; further calls do nothing.
void speakForms();

}
