// The sample's friend book: address books as the user would put them into PostPet's
// folder おともだち帳, with some of the people who write.
#pragma once
#include <filesystem>

namespace tolvek::sample {

inline constexpr int kFriendsWithPets = 8; // in the comma-delimited text
inline constexpr int kFriendsOnCards = 4;  // in the vCards

// All friends have the names that their mails already have, so the book changes none.
// Throws what makeSampleFolder throws.
void makeFriendBook(const std::filesystem::path& folder);

}
