// The sample's friend book: address books as the user would put them into
// PostPet's folder おともだち帳, with some of the people who write.
#pragma once
#include <filesystem>

namespace tolvek::sample {

inline constexpr int kFriendsWithPets = 8; // in the comma-delimited text
inline constexpr int kFriendsOnCards = 4;  // in the vCards

// Everybody goes by the name that the mails have already, so that the book
// changes none of them. Throws as makeSampleFolder does.
void makeFriendBook(const std::filesystem::path& folder);

}
