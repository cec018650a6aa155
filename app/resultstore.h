#pragma once

#include "models/catalogue.h"

#include <array>
#include <span>
#include <string>

namespace app
{

inline constexpr int kMaxResults = 20;

/// One stored analysis.
struct ResultRecord {
    std::string Method; // "SV", "Decay"; empty: unused
    int Model = 0;
    double KorF = 0, Kq1 = 0, Kq2 = 0, Kq22 = 0;
    double R2 = 0;
    std::string Error; // error text of the fit, shown unchanged
    double R = 0;      // nm
    double Se = 0;     // residual sum of squares
    bool operator==(const ResultRecord&) const = default;
};

/// What the status line said of the analysis of a record; session files do not keep it.
struct RecordVerdict {
    int run = 0; // number of the analysis since the program started; 0: of an earlier run of the program
    std::string text{};
    bool operator==(const RecordVerdict&) const = default;
};

/// The last twenty results and the row for the next result.
struct ResultStore {
    std::array<ResultRecord, kMaxResults + 1> ResultData{}; // record i belongs to table row i; 0 is unused
    std::array<RecordVerdict, kMaxResults + 1> verdicts{};  // go with their records
    int ResultCursor = 1;                                   // 1..20
    int ResultRowEnd = 1;                                   // one past the highest row filled, 1..21
    int runs = 0;                                           // analyses stored since the program started

    void MoveData(int from, int to);
    void SwapData(int a, int b);
    /// Fills a record from the fields of a session-file line. If fields are missing, the record keeps its old values.
    void SetResultRecord(int index, std::span<const std::string> fields);
    void clearAll();
    /// Stores a finished analysis at the cursor and advances the cursor. Of K or F, the rate constants and the radius,
    /// only the quantities in `mask` are copied; the record keeps its old values of the other quantities.
    void store(const ResultRecord& result, int mask);
    /// Keeps a verdict with every record of an analysis, wherever the record has been moved.
    void setVerdict(int run, const std::string& verdict);
    /// Whether both hold the same analyses, whatever is known of their verdicts by now.
    bool sameResults(const ResultStore& other) const;
    bool operator==(const ResultStore&) const = default;
};

/// models::interactionRadius() under its given name.
double RadiusFromK(double K, double s);

/// Receives finished analyses. The results table of the main window implements it, tests record the calls.
class ResultSink
{
public:
    virtual ~ResultSink() = default;
    virtual void storeResult(const ResultRecord& result, int mask) = 0;
};

} // namespace app
