#pragma once

// Functions and procedures of PostgreSQL. Private to the data module.

#include "data/Params.h"
#include "data/SqlStatement_p.h"

#include <QList>

class QSqlQuery;

namespace Zel
{

struct Argument {
    QString Name;
    QString Type; ///< The name of the type in SQL.
    QChar Mode;   ///< i: in, o: out, b: both, v: variadic, t: column of the returned table.
    bool HasDefault = false;

    bool IsInput() const { return Mode == u'i' || Mode == u'b' || Mode == u'v'; }
    bool IsOutput() const { return Mode == u'o' || Mode == u'b'; }
};

struct Routine {
    QString Name; ///< The quoted name, with the schema.
    bool IsProcedure = false;
    bool ReturnsSet = false;
    QString ReturnType;
    QList<Argument> Arguments;

    /// Whether the routine returns one value and has no output arguments.
    bool ReturnsValue() const;
    /// The first parameter without an argument of this name; nullptr when there is none.
    const TParam *UnknownOf(const TParams &params) const;
    /// Whether each parameter is an argument and each required input has a parameter.
    bool Takes(const TParams &params) const;
    /// Adds the parameters that are missing: required arguments, outputs and "Result".
    void Complete(TParams &params) const;
    /// The statement that calls the routine with the inputs among @p params.
    Statement Call(const TParams &params) const;
};

/// All visible routines of this name in any case, or those of one schema for a name with schema and point.
/// @p query runs the search; after a failure it has the error.
QList<Routine> RoutinesNamed(const QString &name, QSqlQuery &query);

} // namespace Zel
