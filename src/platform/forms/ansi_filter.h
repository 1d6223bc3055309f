// Holds what a user enters to the characters of code page 932, since nothing
// else can be stored or handed to the outside program.
#pragma once
#include <QString>

class QLineEdit;

namespace tolvek {

// The text without the characters that have no form; line ends stay.
QString onlyAnsi(const QString& text);

// Characters beyond the code page fall away as they are typed or pasted.
void holdToAnsi(QLineEdit& edit);

}
