#include "demo/travel_diary.h"

#include <array>

namespace tolvek::sample {

namespace {

constexpr std::array<TextView, 7> kWeather{u"晴れ",         u"くもり",   u"霧のち晴れ", u"雨",
                                           u"風の強い晴れ", u"にわか雨", u"快晴"};
constexpr std::array<TextView, 9> kPlaces{u"灯台の岬",   u"石段の町",   u"湯けむりの谷",
                                          u"りんごの里", u"湖の渡し場", u"古い鉱山",
                                          u"朝市の港",   u"杉の峠",     u"鐘のある丘"};
constexpr std::array<TextView, 11> kFinds{
    u"青いガラス玉", u"帰りそびれた渡り鳥", u"二百年前の道しるべ",   u"看板だけの食堂",
    u"三つ子の橋",   u"猫の駅長",           u"だれかの落とした手紙", u"まるい虹",
    u"歌う井戸",     u"片方だけの下駄",     u"名のない小さな滝"};
constexpr std::array<TextView, 6> kMeals{u"焼き魚",   u"きのこの鍋",       u"山菜そば",
                                         u"豆ごはん", u"いもの煮ころがし", u"貝のみそ汁"};
constexpr std::array<TextView, 5> kThoughts{
    u"遠くまで来たと思います。", u"道に迷うのも、なかなか上手になりました。",
    u"地図のしわが、だんだん本物の山に見えてきました。", u"足は痛いけれど、明日も歩けそうです。",
    u"この音を、はなさんにも聞かせたい。"};

template <std::size_t Size> Text pick(const std::array<TextView, Size>& list, int number)
{
    return Text(list[static_cast<std::size_t>(number) % Size]);
}

void appendDay(std::vector<Text>& lines, int day)
{
    lines.push_back(u"■ " + decimal(day) + u"日目　" + pick(kWeather, day * 3));
    lines.push_back(u"朝、宿を出て" + pick(kPlaces, day) + u"へ向かいました。");
    lines.push_back(u"荷物は昨日より" + decimal(day % 4 + 1) + u"つ減らしました。");
    lines.push_back(u"道ばたで、" + pick(kFinds, day * 5) + u"を見つけました。");
    lines.push_back(u"しばらく座って、絵を" + decimal(day % 3 + 1) + u"枚かきました。");
    lines.push_back(u"お昼は" + pick(kMeals, day) + u"。" + pick(kMeals, day + 2) + u"も少し。");
    lines.push_back(u"午後は" + pick(kPlaces, day + 4) + u"まで、" + decimal(day % 9 + 6) +
                    u"キロ歩きました。");
    lines.push_back(u"途中で会った人に、" + pick(kFinds, day * 7 + 3) + u"の話を聞きました。");
    lines.push_back(pick(kThoughts, day));
    lines.push_back(u"夜は" + pick(kPlaces, day + 4) + u"の宿。" + decimal(day % 5 + 7) +
                    u"時に眠りました。");
}

}

Letter travelDiary()
{
    Letter letter;
    letter.subject = u"旅の日記、ぜんぶ";
    letter.lines.push_back(u"はなさん、約束の旅の日記を、はじめから終わりまで写して送ります。");
    for (int day = 1; day <= kDiaryDays; ++day)
        appendDay(letter.lines, day);
    letter.lines.push_back(u"おしまい。読み終わったら、感想を一行だけください。　　たろう");
    return letter;
}

}
