#include "platform/runtime/runtime_error.h"

#include "platform/runtime/text.h"

#include <algorithm>
#include <iterator>

namespace tolvek {

namespace {

struct ErrorText {
    int number;
    std::u16string_view text; // "%" is the gap for a name
};

// Ordered by number, for the binary search.
constexpr ErrorText kErrorTexts[] = {
    {5, u"プロシージャの呼び出し、または引数が不正です。"},
    {6, u"オーバーフローしました。"},
    {7, u"メモリが不足しています。"},
    {9, u"インデックスが有効範囲にありません。"},
    {13, u"型が一致しません。"},
    {51, u"内部エラーです。"},
    {52, u"ファイル名または番号が不正です。"},
    {53, u"ファイルが見つかりません。"},
    {54, u"ファイル モードが不正です。"},
    {55, u"ファイルは既に開かれています。"},
    {57, u"デバイス I/O エラーです。"},
    {58, u"既に同名のファイルが存在しています。"},
    {61, u"ディスクの空き容量が不足しています。"},
    {62, u"ファイルにこれ以上データがありません。"},
    {67, u"ファイルが多すぎます。"},
    {70, u"書き込みできません。"},
    {75, u"パス名が無効です。"},
    {76, u"パスが見つかりません。"},
    {91, u"オブジェクト変数または With ブロック変数が設定されていません。"},
    {94, u"Null の使い方が不正です。"},
    {340, u"コントロール配列の要素がありません。"},
    {380, u"プロパティの値が不正です。"},
    {429, u"ActiveX コンポーネントはオブジェクトを作成できません。"},
    {3021, u"カレント レコードがありません。"},
    {3022,
     u"インデックス、主キー、またはリレーションシップで値が重複しているので、テーブルを変更できま"
     u"せんでした。重複する値のあるフィールドの値を変更するか、インデックスを削除してください。"
     u"または重複する値を使用できるように再定義してください。"},
    {3024, u"ファイル '%' が見つかりませんでした。"},
    {3027, u"更新できません。データベースまたはオブジェクトは読み取り専用です。"},
    {3034, u"トランザクションが開始されていないので、確定も取り消しもできません。"},
    {3041, u"データベース '%' の形式には対応していません。"},
    {3061, u"パラメータが少なすぎます。% を指定してください。"},
    {3075, u"クエリ式 '%' の 構文エラー : 演算子がありません。"},
    {3078, u"入力テーブルまたはクエリ '%' "
           u"が見つかりませんでした。そのテーブルやクエリが存在していること、"
           u"または名前が正しいことを確認してください。"},
    {3134, u"INSERT INTO ステートメントの構文エラーです。"},
    {3142, u"SQL ステートメントの後に文字があります。"},
    {3163, u"フィールドのサイズが小さすぎて、追加しようとしたデータを格納できません。"},
    {3167, u"レコードは削除されています。"},
    {3204, u"データベースは既に存在します。"},
    {3265, u"この名前の項目はコレクションにありません。"},
    {3315, u"フィールド '%' には長さ 0 の文字列を指定できません。"},
    {3343, u"データベースの形式 '%' を認識できません。"},
    {3349, u"数値がフィールドの範囲を超えています。"},
    {3356, u"データベースは別のプログラムが排他的に使用しています。"},
    {3420, u"オブジェクトが正しくないか、設定されていません。"},
    {3464, u"抽出条件でデータ型が一致しません。"},
    {30009, u"行の値が不正です。"},
    {30010, u"列の値が不正です。"},
};

// The disk itself or the connection to it has failed; the path is still valid.
bool isDeviceFailure(const std::error_code& code)
{
    return code == std::errc::io_error || code == std::errc::no_such_device ||
           code == std::errc::no_such_device_or_address;
}

int fileErrorNumber(const std::error_code& code)
{
    if (isDeviceFailure(code)) return 57;
    if (code == std::errc::no_such_file_or_directory) return 53;
    if (code == std::errc::not_a_directory) return 76;
    if (code == std::errc::file_exists) return 58;
    if (code == std::errc::no_space_on_device) return 61;
    if (code == std::errc::device_or_resource_busy || code == std::errc::text_file_busy) return 70;
    return 75;
}

}

std::u16string errorText(int number, std::u16string_view name)
{
    const auto* found = std::ranges::lower_bound(kErrorTexts, number, {}, &ErrorText::number);
    if (found == std::end(kErrorTexts) || found->number != number) return {};
    std::u16string text(found->text);
    if (const auto gap = text.find(u'%'); gap != text.npos)
        text.replace(gap, 1, name);
    else if (number == 53 && !name.empty())
        text.append(u": ").append(name); // a missing shared library is reported by name
    return text;
}

RuntimeError::RuntimeError(int number, std::u16string_view name)
    : RuntimeError(number, errorText(number, name), nullptr)
{
}

RuntimeError::RuntimeError(int number, std::u16string description, std::nullptr_t)
    : number_(number), description_(std::move(description)),
      what_(std::to_string(number) + ": " + toUtf8(description_))
{
}

RuntimeError fileError(const std::error_code& code, std::u16string_view name)
{
    return RuntimeError(fileErrorNumber(code), name);
}

}
