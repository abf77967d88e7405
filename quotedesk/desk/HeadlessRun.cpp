#include "desk/HeadlessRun.h"

#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueProviders.h"
#include "desk/MainWindow.h"
#include "desk/OpenQuotes.h"
#include "quote/ProductEditors.h"

#include "data/ClientDataSet.h"
#include "funds/frm_FundSelector.h"
#include "toolkit/TApplication.h"

#include <QApplication>
#include <QEventLoop>
#include <QHash>
#include <QPixmap>
#include <QScopeGuard>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

struct Text {
    Q_DECLARE_TR_FUNCTIONS(HeadlessRun)
};

/// The number of funds that are chosen when the options name none.
constexpr int FewFunds = 4;

/// The time limit for the window to appear, in milliseconds: enough for a busy machine, and a hanging program
/// is reported.
constexpr int PatienceMs = 60'000;

/// Without a user the answer is that there are no previous investments, and messages are dropped.
class Nobody final : public AdviserAtScreen
{
public:
    bool askYesNo(QWidget *, const QString &) override { return false; }
    void tell(QWidget *, const QString &, const QString &) override {}
};

} // namespace

HeadlessRun::HeadlessRun(MainWindow &window, const CatalogueDatabase &catalogue, const Options &options,
                         const Quote &quote)
    : m_window(window), m_catalogue(catalogue), m_options(options), m_quote(quote)
{
}

QString HeadlessRun::folder() const
{
    return m_hasFolder ? m_folder.absolutePath() : QString();
}

AllocationResult HeadlessRun::run()
{
    const TExceptionReport former = SetExceptionReport([this](const QString &message) {
        if (m_reported.isEmpty())
            m_reported = message;
    });
    const auto restore = qScopeGuard([&former] { SetExceptionReport(former); });

    prepareFolder();
    showWindow();
    beginQuote();
    takePicture(m_window, "start");
    chooseFunds(fundsToChoose());
    takePicture(m_window, "funds");
    if (m_options.allocate) {
        allocation().fraFundToolBar->sbtAllocateAmount->click();
        raiseReported();
        takePicture(m_window, "allocated");
    }
    return {ShownSplit(m_editor->quote())};
}

void HeadlessRun::prepareFolder()
{
    if (m_options.screenshots.isEmpty()) {
        QTemporaryDir fresh(QDir::temp().filePath(u"quotedesk-XXXXXX"_s));
        if (!fresh.isValid())
            throw HeadlessError(
                Text::tr("The folder for the screenshots cannot be created: %1").arg(fresh.errorString()));
        fresh.setAutoRemove(false);
        m_folder.setPath(fresh.path());
    } else {
        m_folder.setPath(m_options.screenshots);
        if (!m_folder.mkpath(u"."_s))
            throw HeadlessError(Text::tr("The folder %1 cannot be created").arg(m_options.screenshots));
    }
    m_hasFolder = true;
}

void HeadlessRun::showWindow()
{
    m_window.show();
    QCoreApplication::processEvents();
    raiseReported();
}

void HeadlessRun::beginQuote()
{
    static Nobody nobody;
    m_window.session().setAdviser(nobody);
    m_editor = m_window.quotes().begin(m_quote);
    FundsPage *const page = m_editor->fundsPage();
    // The allocation frame initialises itself after its first paint, so its page must be in front.
    m_editor->form()->pcPages->setCurrentWidget(page);
    if (!page->isReady()) {
        QEventLoop loop;
        QObject::connect(page, &FundsPage::ready, &loop, &QEventLoop::quit);
        QTimer::singleShot(PatienceMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    raiseReported();
    if (!page->isReady())
        throw HeadlessError(Text::tr("The window could not be shown"));
}

QuoteAllocation &HeadlessRun::allocation() const
{
    return *m_editor->fundsPage()->fraFundAllocation;
}

QList<int> HeadlessRun::fundsToChoose() const
{
    TClientDataSet offered;
    offered.SetData(m_window.session().providers().fundPacket(m_quote.productID));
    TField *const fundID = offered.FieldByName(u"FundID"_s);
    if (m_options.funds.isEmpty()) {
        // The first fund of each group type represents the catalogue best.
        TField *const typeID = offered.FieldByName(u"GroupTypeID"_s);
        QList<int> few;
        QSet<int> types;
        for (; !offered.Eof() && few.size() < FewFunds; offered.Next()) {
            if (types.contains(typeID->AsInteger()))
                continue;
            types.insert(typeID->AsInteger());
            few.append(fundID->AsInteger());
        }
        return few;
    }

    QSet<int> known;
    for (; !offered.Eof(); offered.Next())
        known.insert(fundID->AsInteger());
    for (const int fund : m_options.funds) {
        if (known.contains(fund))
            continue;
        throw HeadlessError(
            m_catalogue.hasFund(fund)
                ? Text::tr("Fund %1 is not offered by the %2").arg(fund).arg(m_editor->product().name)
                : Text::tr("Fund %1 is not in the catalogue").arg(fund));
    }
    return m_options.funds;
}

void HeadlessRun::chooseFunds(const QList<int> &funds)
{
    // click() returns only when the dialog is closed. So a timer, which fires in the dialog's event loop,
    // drives the dialog as soon as it appears.
    QTimer whenModal;
    QObject::connect(&whenModal, &QTimer::timeout, &m_window, [this, &funds, &whenModal] {
        auto *const selector = qobject_cast<TfrmFundSelector *>(QApplication::activeModalWidget());
        if (!selector)
            return;
        whenModal.stop();
        if (!GuardedCall([this, selector, &funds] { driveSelector(*selector, funds); }))
            selector->reject();
    });
    whenModal.start(10);
    allocation().fraFundToolBar->sbtFunds->click();
    raiseReported();

    QSet<int> missing(funds.cbegin(), funds.cend());
    for (const TFundRec &record : allocation().Funds())
        missing.remove(record.FundID);
    if (!missing.isEmpty())
        throw HeadlessError(Text::tr("Fund %1 was left out: a fund of the same name is already chosen")
                                .arg(*missing.cbegin()));
}

void HeadlessRun::driveSelector(TfrmFundSelector &selector, const QList<int> &funds)
{
    TfraFundSelector &frame = *selector.fraFundSelector;
    TTreeView &tree = *frame.fraFundsTreeView->tvFunds;
    TField *const fundID = frame.cdsFund->FieldByName(u"FundID"_s);

    QHash<int, TTreeNode *> nodes;
    for (TTreeNode *node = tree.Items().GetFirstNode(); node; node = node->GetNext()) {
        if (node->Level() != TfraFundsTreeView::FundLevel)
            continue;
        frame.cdsFund->GotoBookmark(node->Data());
        if (!nodes.contains(fundID->AsInteger()))
            nodes.insert(fundID->AsInteger(), node);
    }
    for (const int fund : funds) {
        TTreeNode *const node = nodes.value(fund);
        if (!node)
            throw HeadlessError(Text::tr("Fund %1 is not among the funds to choose from").arg(fund));
        tree.SetSelected(node);
        frame.sbtAdd->click();
    }
    raiseReported();
    takePicture(selector, "selector");
    frame.btnSelect->click();
}

void HeadlessRun::takePicture(QWidget &widget, const char *step)
{
    QCoreApplication::processEvents();
    raiseReported();
    const QString file = m_folder.absoluteFilePath(u"%1-%2.png"_s.arg(++m_step).arg(QLatin1StringView(step)));
    if (!widget.grab().save(file))
        throw HeadlessError(
            Text::tr("The screenshot %1 cannot be written").arg(QDir::toNativeSeparators(file)));
}

void HeadlessRun::raiseReported()
{
    if (!m_reported.isEmpty())
        throw HeadlessError(std::exchange(m_reported, QString()).simplified());
}

} // namespace QuoteDesk
