#pragma once

// Filters are SQL expressions, and SQLite evaluates them over the shared table in place.

#include "data/Table_p.h"

#include <memory>

struct sqlite3;

namespace Zel
{

/// The private in-memory connection in which filters are compiled and run, one for the process while any
/// dataset holds it. It has no tables of its own: the table to filter is lent to it for one evaluation. It
/// belongs to the GUI thread, as the datasets do.
class FilterEngine : public std::enable_shared_from_this<FilterEngine>
{
public:
    static std::shared_ptr<FilterEngine> Acquire();
    ~FilterEngine();
    FilterEngine(const FilterEngine &) = delete;
    FilterEngine &operator=(const FilterEngine &) = delete;

    /// The rows of @p table that pass @p filter. Raises EDatabaseError with SQLite's reason when the filter
    /// is not one boolean expression over the table's columns; @p dataset is how the error names the dataset.
    VisiblePtr Evaluate(const TTable &table, const QString &filter, TFilterOptions options,
                        const QString &dataset);

    struct Scan;

private:
    FilterEngine();
    sqlite3 *m_db = nullptr;
    std::unique_ptr<Scan> m_scan;
};

} // namespace Zel
