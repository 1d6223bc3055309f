// The invented people of the sample: はな, who owns the folder, and those she writes
// with. All addresses are in the example domains.
#pragma once
#include "platform/runtime/text.h"

#include <vector>

namespace tolvek::sample {

struct Person {
    Text name; // empty: this person never gives a name
    Text address;
    Text pet;
    Text petKind;
};

const Person& hana();
const std::vector<Person>& friends();

// Further people, any number; the same index gives the same person.
Person passerBy(int index);

}
