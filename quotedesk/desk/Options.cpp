#include "desk/Options.h"

#include "database/StoreError.h"
#include "quote/Investment.h"

#include "data/Format.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSet>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Options)
};

/// The parser and its options, shared by reading and help.
struct Parser {
    QCommandLineOption headless{u"headless"_s,
                                Text::tr("Do the job off screen: choose funds, allocate, print the result.")};
    QCommandLineOption amount{u"amount"_s, Text::tr("The investment in rand (100000 when not given)."),
                              u"rand"_s};
    QCommandLineOption by{u"by"_s, Text::tr("Split by percent or by amount (percent when not given)."),
                          u"percent|amount"_s};
    QCommandLineOption funds{u"funds"_s,
                             Text::tr("The IDs of the funds to choose, separated by commas. Without it a few "
                                      "funds are chosen and the amount is allocated."),
                             u"12,15,40"_s};
    QCommandLineOption allocate{u"allocate"_s, Text::tr("Spread the amount evenly over the funds.")};
    QCommandLineOption json{u"json"_s, Text::tr("Print the result as one JSON object instead of a table.")};
    QCommandLineOption screenshots{u"screenshots"_s, Text::tr("The folder for the pictures of each step."),
                                   u"folder"_s};
    QCommandLineOption product{u"product"_s, Text::tr("The ID of the product to quote on."), u"ID"_s};
    QCommandLineOption catalogue{
        u"catalogue"_s,
        Text::tr("Read the funds from a CSV file, plain or packed with gzip, with the columns GroupTypeID, "
                 "GroupTypeDesc, FundGroupID, FundGroupName, FundID, FundName."),
        u"file"_s};
    QCommandLineOption import{
        u"import"_s,
        Text::tr("Import such a file into the catalogue of your quotes without opening a window. When more "
                 "than a fifth of the funds would be removed, nothing is imported without --yes."),
        u"file"_s};
    QCommandLineOption yes{u"yes"_s, Text::tr("With --import or --catalogue: remove funds without asking.")};
    QCommandLineOption database{
        u"database"_s,
        Text::tr(
            "Where the quotes are kept: a file, or postgresql://user@host/database for an office. "
            "Without it a file in your own data folder. You are asked for a password that is not in the "
            "file of PGPASSFILE; postgresql:///?service=name takes an address from that of PGSERVICEFILE; "
            "?sslmode=verify-full makes sure of the server."),
        u"place"_s};
    QCommandLineOption language{u"language"_s, Text::tr("Speak English or Afrikaans."), u"en|af"_s};
    QCommandLineOption dark{u"dark"_s, Text::tr("Start in dark colours.")};
    QCommandLineOption help{{u"h"_s, u"help"_s}, Text::tr("Print this help.")};
    QCommandLineOption version{{u"v"_s, u"version"_s}, Text::tr("Print the version.")};
    QCommandLineParser parser;

    Parser()
    {
        parser.setApplicationDescription(Text::tr(
            "Quote Desk: choose funds, split an investment over them, read the result.\n\n--funds, "
            "--allocate, --json and --screenshots belong to the job off screen and imply --headless; so does "
            "a machine without a display. That job does not touch your quotes.\n--product, --amount and --by "
            "begin a quote in the window.\nThe exit code is 0 when the whole amount was allocated, 1 when an "
            "amount is left or too much is allocated, 2 when the job could not be done."));
        parser.addOptions({headless, amount, by, funds, allocate, json, screenshots, product, catalogue,
                           import, yes, database, language, dark, help, version});
    }
};

QList<int> readFunds(const QString &list)
{
    QList<int> funds;
    QSet<int> known;
    for (const QString &item : list.split(u',')) {
        bool isNumber = false;
        const int fund = item.trimmed().toInt(&isNumber);
        if (!isNumber || fund < 1)
            throw UsageError(Text::tr("--funds: \"%1\" is not a fund ID").arg(item.simplified()));
        if (known.contains(fund))
            throw UsageError(Text::tr("--funds: fund %1 is given twice").arg(fund));
        known.insert(fund);
        funds.append(fund);
    }
    return funds;
}

Language readLanguage(const QString &code)
{
    const std::optional<Language> language = languageByCode(code);
    if (!language)
        throw UsageError(Text::tr("--language: \"%1\" is neither en nor af").arg(code));
    return *language;
}

Currency readAmount(const QString &text)
{
    NumberRules rules = investmentRules();
    rules.low = Currency::fromRaw(Currency::Scale / 100); // a quote needs an investment
    const NumberEntry amount(text, rules);
    if (!amount.isNumber())
        throw UsageError(
            Text::tr("--amount: %1; the investment is an amount from 0.01 to %2 rand")
                .arg(amount.reason(), FormatFloat(FormatMask::TwoDecimals, maximumInvestment())));
    return amount.value();
}

bool readByAmount(const QString &text)
{
    if (text != u"percent"_s && text != u"amount"_s)
        throw UsageError(Text::tr("--by: \"%1\" is neither percent nor amount").arg(text));
    return text == u"amount"_s;
}

int readProduct(const QString &text)
{
    bool isNumber = false;
    const int productID = text.toInt(&isNumber);
    if (!isNumber)
        throw UsageError(Text::tr("--product: \"%1\" is not a product ID").arg(text));
    return productID;
}

StoreLocation readDatabase(const QString &text)
{
    StoreLocation place;
    try {
        place = StoreLocation::fromText(text);
    } catch (const StoreError &error) {
        throw UsageError(Text::tr("--database: %1").arg(error.message()));
    }
    if (!place.server.password().isEmpty())
        throw UsageError(
            Text::tr("--database: a password on the command line can be read by everybody on this "
                     "machine; leave it out, and you are asked for it. It can also stand in "
                     "the file that PGPASSFILE names"));
    return place;
}

/// An import cannot be combined with other jobs.
void checkImport(const Parser &known, const Options &options)
{
    if (known.parser.isSet(known.import)) {
        if (options.import.isEmpty())
            throw UsageError(Text::tr("--import: name the file to import"));
        if (options.headless || options.beginsQuote || known.parser.isSet(known.catalogue))
            throw UsageError(Text::tr("--import: the run imports and ends; leave the other options out"));
    } else if (options.yes && !known.parser.isSet(known.catalogue)) {
        throw UsageError(Text::tr("--yes: use it with --import or --catalogue"));
    }
}

} // namespace

QString helpText()
{
    return Parser().parser.helpText();
}

Options readOptions(const QStringList &arguments)
{
    Parser known;
    QCommandLineParser &parser = known.parser;
    if (!parser.parse(arguments))
        throw UsageError(parser.errorText());

    Options options;
    if (parser.isSet(known.language))
        options.language = readLanguage(parser.value(known.language));
    if (parser.isSet(known.help) || parser.isSet(known.version)) {
        options.question = parser.isSet(known.help) ? Options::Question::Help : Options::Question::Version;
        return options;
    }
    if (!parser.positionalArguments().isEmpty())
        throw UsageError(Text::tr("\"%1\" is not an option; --help lists the options")
                             .arg(parser.positionalArguments().constFirst()));

    if (parser.isSet(known.amount))
        options.amount = readAmount(parser.value(known.amount));
    if (parser.isSet(known.by))
        options.byAmount = readByAmount(parser.value(known.by));
    if (parser.isSet(known.funds))
        options.funds = readFunds(parser.value(known.funds));
    if (parser.isSet(known.product))
        options.productID = readProduct(parser.value(known.product));
    options.allocate = parser.isSet(known.allocate) || !parser.isSet(known.funds);
    options.json = parser.isSet(known.json);
    options.dark = parser.isSet(known.dark);
    options.catalogue = parser.value(known.catalogue);
    options.import = parser.value(known.import);
    options.yes = parser.isSet(known.yes);
    options.screenshots = parser.value(known.screenshots);
    options.headless = parser.isSet(known.headless) || parser.isSet(known.funds) ||
                       parser.isSet(known.allocate) || parser.isSet(known.json) ||
                       parser.isSet(known.screenshots);
    options.beginsQuote = parser.isSet(known.product) || parser.isSet(known.amount) || parser.isSet(known.by);
    checkImport(known, options);
    if (parser.isSet(known.database)) {
        if (options.headless)
            throw UsageError(
                Text::tr("--database: the job off screen uses a database of its own; leave this option out"));
        options.database = readDatabase(parser.value(known.database));
    }
    return options;
}

} // namespace QuoteDesk
