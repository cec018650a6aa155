#include "app/sessiontext.h"

#include "app/textlines.h"
#include "fit/numbertext.h"

#include <algorithm>
#include <array>
#include <utility>

namespace app
{
namespace
{

constexpr std::string_view kTableLine = "Table";
constexpr int kResultFields = 10;

/// One "key=value" line: how its value is written and how it is read.
struct Key {
    std::string_view name;
    std::string (*value)(const Session& session);
    void (*read)(Session& session, std::string_view value);
};

template <std::string PanelState::*Text>
constexpr Key textKey(std::string_view name)
{
    return {name, [](const Session& session) { return oneField(session.panel.*Text, kLineEnd); },
            [](Session& session, std::string_view value) { session.panel.*Text = heldField(value); }};
}

template <int Session::*Count>
constexpr Key countKey(std::string_view name)
{
    return {name, [](const Session& session) { return std::to_string(session.*Count); },
            [](Session& session, std::string_view value) {
                session.*Count = std::clamp(fit::heldInt32(fit::numberFrom(value)), kLeastCount, kMostCount);
            }};
}

/// A setting with two values: any value except 0 and 1 is damage and does not change the setting.
template <int Settings::*Choice>
constexpr Key choiceKey(std::string_view name)
{
    return {name, [](const Session& session) { return std::to_string(session.settings.*Choice); },
            [](Session& session, std::string_view value) {
                const int number = fit::heldInt32(fit::numberFrom(value));
                if (number == 0 || number == 1)
                    session.settings.*Choice = number;
            }};
}

void readModel(Session& session, std::string_view value)
{
    const int model = fit::heldInt32(fit::numberFrom(value));
    if (models::row(model).parameterCount() > 0)
        session.panel.Model = model;
}

/// In the order of writing; the tolerance is filed as "residual".
constexpr std::array<Key, 14> kKeys{
    textKey<&PanelState::kq1>("kq1"),
    textKey<&PanelState::kq2>("kq2"),
    textKey<&PanelState::K>("K"),
    textKey<&PanelState::F>("F"),
    textKey<&PanelState::Cp>("Cp"),
    textKey<&PanelState::s>("s"),
    textKey<&PanelState::iteration>("Iteration"),
    textKey<&PanelState::tolerance>("residual"),
    Key{"Model", [](const Session& session) { return std::to_string(session.panel.Model); }, readModel},
    textKey<&PanelState::fitRegion>("FitRegion"),
    countKey<&Session::rows>("Rows"),
    countKey<&Session::columns>("Cols"),
    choiceKey<&Settings::LogMode>("logmode"),
    choiceKey<&Settings::AssessmentMode>("Assessmentmode"),
};

std::string joined(const std::vector<std::string>& fields)
{
    std::string line;
    for (const std::string& field : fields) {
        if (&field != &fields.front())
            line += '\t';
        line += oneField(field, kSeparators);
    }
    return line.append(kLineEnd);
}

std::string resultLine(const ResultRecord& record)
{
    constexpr std::string_view kConstant = "0.000e+00";
    return joined({record.Method, std::to_string(record.Model), fit::formatNumber(record.KorF, kConstant),
                   fit::formatNumber(record.Kq1, kConstant), fit::formatNumber(record.Kq2, kConstant),
                   fit::formatNumber(record.Kq22, kConstant), fit::formatNumber(record.Se, "####0.0##"), record.Error,
                   fit::formatNumber(record.R, "##0.0#"), fit::formatNumber(record.R2, "0.00000#")});
}

void readKeys(std::string_view& rest, Session& session)
{
    for (auto line = takeLine(rest); line && line != kTableLine; line = takeLine(rest)) {
        const std::size_t sign = line->find('=');
        if (sign == std::string_view::npos)
            continue;
        const auto key = std::ranges::find(kKeys, line->substr(0, sign), &Key::name);
        if (key != kKeys.end())
            key->read(session, line->substr(sign + 1));
    }
}

void readCells(std::string_view& rest, Session& session)
{
    session.cells.resize(static_cast<std::size_t>(session.rows - 1));
    for (std::vector<std::string>& row : session.cells) {
        row.resize(static_cast<std::size_t>(session.columns - 1));
        if (const auto line = takeLine(rest))
            std::ranges::move(fieldsOf(*line, session.columns - 1), row.begin());
    }
}

void readResults(std::string_view rest, ResultStore& results)
{
    int count = 0;
    for (auto line = takeLine(rest); line && count < kMaxResults; line = takeLine(rest))
        if (!line->empty())
            results.SetResultRecord(++count, fieldsOf(*line, kResultFields));
    results.ResultRowEnd = count + 1;
    results.ResultCursor = count == kMaxResults ? 1 : count + 1;
}

} // namespace

std::string writeSession(const Session& session)
{
    std::string text = std::string(kSessionFirstLine).append(kLineEnd);
    for (const Key& key : kKeys)
        text.append(key.name).append("=").append(key.value(session)).append(kLineEnd);
    text.append(kTableLine).append(kLineEnd);
    for (const std::vector<std::string>& row : session.cells)
        text += joined(row);
    for (int i = 1; i < session.results.ResultRowEnd; ++i)
        text += resultLine(session.results.ResultData[static_cast<std::size_t>(i)]);
    return text;
}

bool startsSession(std::string_view bytes) { return takeLine(bytes) == kSessionFirstLine; }

std::optional<Session> readSession(std::string_view text, Session before)
{
    if (takeLine(text) != kSessionFirstLine)
        return std::nullopt;
    before.results.clearAll();
    readKeys(text, before);
    readCells(text, before);
    readResults(text, before.results);
    return before;
}

} // namespace app
