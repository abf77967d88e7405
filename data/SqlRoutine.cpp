#include "data/SqlRoutine_p.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace Zel
{

namespace
{

QString quotedName(QString name)
{
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

TParamDataType paramTypeOf(const QString &sqlType)
{
    using Type = TParamDataType;
    static const QHash<QString, Type> types{{u"smallint"_s, Type::Integer},
                                            {u"integer"_s, Type::Integer},
                                            {u"bigint"_s, Type::Integer},
                                            {u"numeric"_s, Type::Currency},
                                            {u"real"_s, Type::Float},
                                            {u"double precision"_s, Type::Float},
                                            {u"boolean"_s, Type::Boolean},
                                            {u"date"_s, Type::Date},
                                            {u"timestamp without time zone"_s, Type::DateTime},
                                            {u"timestamp with time zone"_s, Type::DateTime}};
    return types.value(sqlType, Type::String);
}

} // namespace

bool Routine::ReturnsValue() const
{
    return !IsProcedure && !ReturnsSet && ReturnType != u"void" && ReturnType != u"record" &&
           std::none_of(Arguments.begin(), Arguments.end(), std::mem_fn(&Argument::IsOutput));
}

const TParam *Routine::UnknownOf(const TParams &params) const
{
    for (int i = 0; i < params.Count(); ++i) {
        const auto isIt = [&](const Argument &argument) {
            return argument.Name.compare(params[i].Name, Qt::CaseInsensitive) == 0;
        };
        if (params[i].ParamType != TParamType::Result &&
            std::none_of(Arguments.begin(), Arguments.end(), isIt))
            return &params[i];
    }
    return nullptr;
}

bool Routine::Takes(const TParams &params) const
{
    return !UnknownOf(params) &&
           std::all_of(Arguments.begin(), Arguments.end(), [&](const Argument &argument) {
               return !argument.IsInput() || argument.HasDefault || params.FindParam(argument.Name);
           });
}

void Routine::Complete(TParams &params) const
{
    for (const Argument &argument : Arguments) {
        if (argument.Mode == u't' || argument.HasDefault || params.FindParam(argument.Name))
            continue;
        const TParamType kind = !argument.IsOutput() ? TParamType::Input
                                : argument.IsInput() ? TParamType::InputOutput
                                                     : TParamType::Output;
        params.Add(argument.Name, paramTypeOf(argument.Type), kind);
    }
    bool hasResult = !ReturnsValue();
    for (int i = 0; i < params.Count(); ++i)
        hasResult = hasResult || params[i].ParamType == TParamType::Result;
    if (!hasResult)
        params.Add(u"Result"_s, paramTypeOf(ReturnType), TParamType::Result);
}

Statement Routine::Call(const TParams &params) const
{
    Statement statement;
    statement.Pieces.last() = (IsProcedure ? u"CALL "_s : u"SELECT * FROM "_s) + Name + u'(';
    QString comma;
    for (const Argument &argument : Arguments) {
        // PostgreSQL wants a placeholder for each output of a procedure, and none for those of a function.
        const bool placeOnly = IsProcedure && argument.Mode == u'o';
        if (!placeOnly && (!argument.IsInput() || !params.FindParam(argument.Name)))
            continue;
        statement.Pieces.last() += std::exchange(comma, u", "_s) + quotedName(argument.Name) + u" => "_s;
        if (placeOnly) {
            statement.Pieces.last() += u"NULL"_s;
        } else {
            statement.Pieces.last() += u"CAST("_s;
            statement.AddMark(argument.Name);
            statement.Pieces.last() += u" AS "_s + argument.Type + u')';
        }
    }
    statement.Pieces.last() += u')';
    return statement;
}

QList<Routine> RoutinesNamed(const QString &name, QSqlQuery &query)
{
    query.setForwardOnly(true);
    const bool prepared = query.prepare(
        u"SELECT CAST(p.oid AS bigint), quote_ident(n.nspname) || '.' || quote_ident(p.proname),"
        " CAST(p.prokind AS text), CAST(p.proretset AS integer), format_type(p.prorettype, NULL),"
        " CAST(coalesce(p.proargmodes[a.place], 'i') AS text), coalesce(p.proargnames[a.place], ''),"
        " format_type(a.argtype, NULL), CAST(p.pronargs - p.pronargdefaults AS integer)"
        " FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace"
        " LEFT JOIN LATERAL unnest(coalesce(p.proallargtypes, CAST(p.proargtypes AS oid[])))"
        " WITH ORDINALITY AS a(argtype, place) ON true"
        " WHERE p.prokind IN ('f', 'p') AND (lower(n.nspname || '.' || p.proname) = lower(CAST(? AS text))"
        " OR lower(p.proname) = lower(CAST(? AS text)) AND pg_function_is_visible(p.oid))"
        " ORDER BY p.oid, a.place"_s);
    query.addBindValue(name);
    query.addBindValue(name);
    QList<Routine> found;
    if (!prepared || !query.exec())
        return found;
    std::optional<qlonglong> last;
    int inputs = 0;
    while (query.next()) {
        const qlonglong number = query.value(0).toLongLong();
        if (last != number) {
            found.append({query.value(1).toString(),
                          query.value(2).toString() == u"p",
                          query.value(3).toBool(),
                          query.value(4).toString(),
                          {}});
            inputs = 0;
        }
        last = number;
        if (query.value(7).isNull())
            continue;
        Argument argument{query.value(6).toString(), query.value(7).toString(),
                          query.value(5).toString().at(0)};
        if (argument.IsInput())
            argument.HasDefault = inputs++ >= query.value(8).toInt();
        found.last().Arguments.append(argument);
    }
    return found;
}

} // namespace Zel
