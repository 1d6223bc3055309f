// The header lines by which a user recognises a mail that wasn't archived.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

// The first five fields of a head, and From, Subject and Date wherever they are. In
// UTF-8, decoded, unfolded, each cut to 200 characters; separated by LF. A head
// without fields gives its first lines as they are.
std::string firstLines(std::string_view head);

}
