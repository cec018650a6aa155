#include "app/resultstore.h"

#include "fit/numbertext.h"
#include "models/sphere.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <optional>
#include <utility>

namespace app
{
namespace
{

std::size_t slot(int index)
{
    assert(index >= 0 && index <= kMaxResults);
    return static_cast<std::size_t>(index);
}

/// If a number does not fit into a double, the field keeps its old value.
void setIfFinite(double& field, std::optional<double> number)
{
    if (number && std::isfinite(*number))
        field = *number;
}

void setLeading(double& field, const std::string& text) { setIfFinite(field, fit::numberFrom(text)); }
void setStrict(double& field, const std::string& text) { setIfFinite(field, fit::strictNumber(text)); }

using SetField = void (*)(ResultRecord& record, const std::string& text);

/// The fields of a session-file line, in its order.
constexpr std::array<SetField, 10> kFileFields{
    [](ResultRecord& record, const std::string& text) { record.Method = text; },
    [](ResultRecord& record, const std::string& text) {
        record.Model = fit::roundedInt32(fit::numberFrom(text)).value_or(record.Model);
    },
    [](ResultRecord& record, const std::string& text) { setLeading(record.KorF, text); },
    [](ResultRecord& record, const std::string& text) { setLeading(record.Kq1, text); },
    [](ResultRecord& record, const std::string& text) { setLeading(record.Kq2, text); },
    [](ResultRecord& record, const std::string& text) { setLeading(record.Kq22, text); },
    [](ResultRecord& record, const std::string& text) { setStrict(record.Se, text); },
    [](ResultRecord& record, const std::string& text) { record.Error = text; },
    [](ResultRecord& record, const std::string& text) { setStrict(record.R, text); },
    [](ResultRecord& record, const std::string& text) { setStrict(record.R2, text); },
};

} // namespace

void ResultStore::MoveData(int from, int to)
{
    ResultData[slot(to)] = ResultData[slot(from)];
    verdicts[slot(to)] = verdicts[slot(from)];
}

void ResultStore::SwapData(int a, int b)
{
    std::swap(ResultData[slot(a)], ResultData[slot(b)]);
    std::swap(verdicts[slot(a)], verdicts[slot(b)]);
}

void ResultStore::SetResultRecord(int index, std::span<const std::string> fields)
{
    verdicts[slot(index)] = {};
    const std::size_t count = std::min(fields.size(), kFileFields.size());
    for (std::size_t k = 0; k < count; ++k)
        kFileFields[k](ResultData[slot(index)], fields[k]);
}

void ResultStore::clearAll()
{
    ResultStore empty;
    empty.runs = runs;
    *this = empty;
}

void ResultStore::store(const ResultRecord& result, int mask)
{
    ResultRecord& record = ResultData[slot(ResultCursor)];
    record.Method = result.Method;
    record.Model = result.Model;
    if (mask & models::KorF)
        record.KorF = result.KorF;
    if (mask & models::Kq1)
        record.Kq1 = result.Kq1;
    if (mask & models::Kq2)
        record.Kq2 = result.Kq2;
    if (mask & models::Kq22)
        record.Kq22 = result.Kq22;
    if (mask & models::Radius)
        record.R = result.R;
    record.R2 = result.R2;
    record.Se = result.Se;
    record.Error = result.Error;
    verdicts[slot(ResultCursor)] = {.run = ++runs};
    ResultRowEnd = std::max(ResultRowEnd, ResultCursor + 1);
    ResultCursor = ResultCursor == kMaxResults ? 1 : ResultCursor + 1;
}

bool ResultStore::sameResults(const ResultStore& other) const
{
    return ResultData == other.ResultData &&
           std::ranges::equal(verdicts, other.verdicts, {}, &RecordVerdict::run, &RecordVerdict::run) &&
           ResultCursor == other.ResultCursor && ResultRowEnd == other.ResultRowEnd;
}

void ResultStore::setVerdict(int run, const std::string& verdict)
{
    for (RecordVerdict& kept : verdicts)
        if (run > 0 && kept.run == run)
            kept.text = verdict;
}

double RadiusFromK(double K, double s) { return models::interactionRadius(K, s); }

} // namespace app
