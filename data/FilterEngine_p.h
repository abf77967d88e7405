#pragma once

// Evaluates filters, which are SQL expressions, with SQLite over the shared table, without copying rows.

#include "data/Table_p.h"

#include <memory>

struct sqlite3;

namespace Zel
{

/// The in-memory SQLite connection that compiles and runs filters. All datasets of the process share one
/// engine, which exists while any dataset holds it. It has no tables; each evaluation gives it access to the
/// table to filter. Use it on the GUI thread only, like the datasets.
class FilterEngine : public std::enable_shared_from_this<FilterEngine>
{
public:
    static std::shared_ptr<FilterEngine> Acquire();
    ~FilterEngine();
    FilterEngine(const FilterEngine &) = delete;
    FilterEngine &operator=(const FilterEngine &) = delete;

    /// The rows of @p table that pass @p filter. Throws EDatabaseError with SQLite's reason when the filter
    /// is not one boolean expression over the table's columns. The error names the dataset as @p dataset.
    VisiblePtr Evaluate(const TTable &table, const QString &filter, TFilterOptions options,
                        const QString &dataset);

    struct Scan;

private:
    FilterEngine();
    sqlite3 *m_db = nullptr;
    std::unique_ptr<Scan> m_scan;
};

} // namespace Zel
