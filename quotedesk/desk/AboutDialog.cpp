#include "desk/AboutDialog.h"

#include "catalogue/CatalogueDatabase.h"
#include "database/Database.h"
#include "look/TextLabel.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLibrary>
#include <QLocale>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

/// The version of the PostgreSQL client library that Qt's driver has loaded; blank when there is none.
QString postgresClient()
{
#ifdef Q_OS_WIN
    QLibrary library(u"libpq"_s);
#else
    QLibrary library(u"pq"_s, 5);
#endif
    using Version = int (*)();
    const auto version = reinterpret_cast<Version>(library.resolve("PQlibVersion"));
    if (!version)
        return {};
    const int number = version(); // 150004 is 15.4
    return u"%1.%2"_s.arg(number / 10'000).arg(number % 10'000);
}

/// What there is to know about this program and its data, a line each.
QStringList factsOf(QuoteSession &session, QWidget *parent)
{
    struct State {
        QDateTime imported;
        int funds = 0;
    };
    const auto state = fetch(session.store(), parent, [](QuoteStore &store) {
        const CatalogueDatabase catalogue(store.database());
        return State{catalogue.imported(), catalogue.fundCount()};
    });
    const StoreLocation &place = session.store().location();
    QStringList facts{
        AboutDialog::tr("Version: %1").arg(QApplication::applicationVersion()),
        AboutDialog::tr("Quotes: %1").arg(place.text()),
        AboutDialog::tr("Catalogue: %1, %2")
            .arg(AboutDialog::tr("%n fund(s)", nullptr, state.funds),
                 state.imported.isValid()
                     ? AboutDialog::tr("imported on %1")
                           .arg(QLocale().toString(state.imported.date(), QLocale::LongFormat))
                     : AboutDialog::tr("came with the program")),
        AboutDialog::tr("System: %1").arg(QSysInfo::prettyProductName()),
        u"Qt: %1"_s.arg(QLatin1StringView(qVersion())),
        u"SQLite: %1"_s.arg(session.catalogue().database().single(u"SELECT sqlite_version()"_s).toString())};
    if (const QString client = place.isServer() ? postgresClient() : QString(); !client.isEmpty())
        facts.append(AboutDialog::tr("PostgreSQL client: %1").arg(client));
    return facts;
}

QPlainTextEdit *newText(const QString &name)
{
    auto *const text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    return text;
}

} // namespace

QList<UsedLibrary> usedLibraries()
{
    QList<UsedLibrary> libraries;
    QFile file(u":/libraries.txt"_s);
    if (!file.open(QIODevice::ReadOnly))
        return libraries;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const QStringList parts = line.split(u'|');
        if (!line.startsWith(u'#') && parts.size() == 4)
            libraries.append({parts.at(0).trimmed(), parts.at(1).trimmed(), parts.at(2).trimmed()});
    }
    return libraries;
}

AboutDialog::AboutDialog(QuoteSession &session, QWidget *parent)
    : QDialog(parent), edFacts(newText(u"edFacts"_s)), edLicences(newText(u"edLicences"_s))
{
    setObjectName(u"AboutDialog"_s);
    setWindowTitle(tr("About Quote Desk"));
    const QStringList facts = factsOf(session, this);
    edFacts->setPlainText(facts.join(u'\n'));
    edFacts->setAccessibleName(tr("Versions and places"));
    QStringList licences;
    for (const UsedLibrary &library : usedLibraries())
        licences.append(u"%1: %2\n%3"_s.arg(library.name, library.licence, library.address));
    edLicences->setPlainText(licences.join(u'\n'));
    edLicences->setAccessibleName(tr("Licences of the libraries"));

    auto *const picture = new QLabel;
    picture->setPixmap(QApplication::windowIcon().pixmap(64, 64));
    auto *const name = new TextLabel(LookFont::Title);
    name->setText(u"Quote Desk"_s);
    auto *const purpose = new TextLabel(LookFont::Body, LookColor::Text2);
    purpose->setText(tr("Choose funds, split an investment over them, read the result."));
    purpose->setWordWrap(true);
    auto *const words = new QVBoxLayout;
    words->addWidget(name);
    words->addWidget(purpose);
    words->addStretch(1);
    auto *const head = new QHBoxLayout;
    head->setSpacing(LookSpace::Large);
    head->addWidget(picture);
    head->addLayout(words, 1);
    auto *const caption = new TextLabel(LookFont::Heading);
    caption->setText(tr("Libraries and their licences"));
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    btnCopy = buttons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    btnCopy->setObjectName(u"btnCopy"_s);
    btnCopy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    edFacts->setFixedHeight(static_cast<int>(facts.size() + 1) * edFacts->fontMetrics().lineSpacing() +
                            LookSpace::Large);
    auto *const layout = new QVBoxLayout(this);
    layout->setSpacing(LookSpace::Medium);
    layout->addLayout(head);
    layout->addWidget(edFacts);
    layout->addWidget(caption);
    layout->addWidget(edLicences, 1);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(btnCopy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(text()); });
    resize(QSize(600, 520).boundedTo(screen()->availableSize() * 9 / 10));
    buttons->button(QDialogButtonBox::Close)->setFocus();
}

AboutDialog::~AboutDialog() = default;

QString AboutDialog::text() const
{
    return u"Quote Desk\n%1\n\n%2\n"_s.arg(edFacts->toPlainText(), edLicences->toPlainText());
}

} // namespace QuoteDesk
