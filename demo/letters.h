// The texts of the sample's letters, assembled from short pieces.
#pragma once
#include "demo/people.h"
#include "platform/runtime/text.h"

#include <vector>

namespace tolvek::sample {

struct Letter {
    Text subject;
    std::vector<Text> lines;
};

// Gives the same letter for the same number and people.
Letter letter(int number, const Person& writer, const Person& reader);

int topicCount();

}
