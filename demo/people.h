// The invented people of the sample: はな, to whom the folder belongs, and
// those she writes with. All addresses lie in the example domains.
#pragma once
#include "platform/runtime/text.h"

#include <vector>

namespace tolvek::sample {

struct Person {
    Text name; // empty: this one never gives a name
    Text address;
    Text pet;
    Text petKind;
};

const Person& hana();
const std::vector<Person>& friends();

// Any number of further people, always the same for the same index.
Person passerBy(int index);

}
