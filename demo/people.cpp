#include "demo/people.h"

#include <array>

namespace tolvek::sample {

namespace {

constexpr std::array<TextView, 20> kFamilies{
    u"青木", u"石田", u"上野", u"江川", u"大島", u"加藤", u"木村", u"久保", u"小池", u"坂本",
    u"清水", u"杉山", u"関口", u"高橋", u"千葉", u"土屋", u"中村", u"西田", u"野口", u"橋本"};
constexpr std::array<TextView, 16> kGiven{
    u"あおい", u"いずみ", u"香織",   u"恵子", u"さやか", u"茂", u"拓也", u"千尋",
    u"直樹",   u"春香",   u"ひろし", u"真理", u"美咲",   u"優", u"良太", u"若菜"};

}

const Person& hana()
{
    static const Person person{u"はな", u"hana@example.jp", u"モモ", u"くま"};
    return person;
}

const std::vector<Person>& friends()
{
    static const std::vector<Person> people{
        {u"たろう", u"taro@example.com", u"クッキー", u"いぬ"},
        {u"山口さくら", u"sakura@example.org", u"ミルク", u"うさぎ"},
        {u"ｹﾝｼﾞ", u"kenji@example.com", u"ガンモ", u"かめ"},
        {u"みなみ①号", u"minami@example.jp", u"ソラ", u"ねこ"},
        {u"", u"nanashi@example.org", u"ポチ", u"ロボット"},
        {u"髙木ゆう", u"yuu@example.com", u"チョコ", u"ハムスター"},
        {u"Emily Brown", u"emily@example.org", u"Snow", u"ペンギン"},
        {u"おばあちゃん", u"baachan@example.jp", u"たま", u"ねこ"},
        {u"にいさん", u"niisan@example.com", u"ボルト", u"ロボット"},
        {u"ちえ（会社）", u"chie@work.example.com", u"プリン", u"うさぎ"},
        {u"こばやし", u"kobayashi@example.jp", u"ドン", u"くま"},
        {u"ﾐｷ", u"miki@example.jp", u"ピノ", u"ペンギン"},
        {u"O'Hara Ken", u"ohara@example.org", u"Max", u"いぬ"},
        {u"あゆみ", u"ayumi..a.@keitai.example.jp", u"ルル", u"うさぎ"},
        {u"ふじた先生", u"fujita@school.example.jp", u"カメ吉", u"かめ"},
        {u"まゆ", u"mayu@example.com", u"マロン", u"ハムスター"},
        {u"ジュン", u"jun@example.org", u"ジロー", u"いぬ"},
        {u"", u"club-news@example.com", u"", u""},
        {u"りえ", u"rie@example.jp", u"しずく", u"ねこ"},
        {u"そうた", u"sota@example.com", u"ロク", u"ロボット"},
        {u"表 なおみ", u"naomi@example.org", u"ベル", u"くま"},
        {u"能登ソノ", u"sono@example.jp", u"ソーダ", u"ペンギン"},
        {u"ゆきえ", u"yukie@example.com", u"こゆき", u"うさぎ"},
        {u"Tom & Anne", u"tom.anne@example.org", u"Pip", u"ハムスター"},
        {u"はるか", u"haruka@example.jp", u"はる", u"いぬ"},
        {u"㈱花屋", u"flower@shop.example.com", u"", u""},
        {u"かずま", u"kazuma@example.org", u"テツ", u"ロボット"},
        {u"のぞみ", u"nozomi@example.com", u"ココア", u"ねこ"},
        {u"ひいらぎ", u"hiiragi@example.jp", u"ヒゲ", u"かめ"},
        {u"いとこのマコ", u"mako@example.com", u"パン", u"くま"},
    };
    return people;
}

Person passerBy(int index)
{
    const auto family = kFamilies[static_cast<std::size_t>(index) % kFamilies.size()];
    const auto given = kGiven[static_cast<std::size_t>(index / 3) % kGiven.size()];
    const Person& other = friends()[static_cast<std::size_t>(index) % friends().size()];
    const TextView domain = index % 3 == 0   ? u"@example.jp"
                            : index % 3 == 1 ? u"@example.com"
                                             : u"@example.org";
    return {Text(family) + Text(given), u"friend" + decimal(index) + Text(domain), other.pet,
            other.petKind};
}

}
