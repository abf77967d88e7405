#include "desk/NewQuoteDialog.h"

#include "desk/ClientList.h"
#include "desk/ClientsPage.h"
#include "desk/DialogFoot.h"
#include "desk/ErrorDialog.h"
#include "look/TextLabel.h"
#include "quote/PlainText.h"
#include "quote/ProductEditors.h"
#include "quote/ServerWait.h"

#include "toolkit/Glyphs.h"
#include "toolkit/Look.h"
#include "toolkit/TListView.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace QuoteDesk
{
namespace
{

constexpr int tilesInRow = 3;
constexpr int tileGap = LookSpace::Small;
constexpr int tickSize = 16;
constexpr qsizetype longestName = 30; // in a button

/// Draws a product as a tile: its name, and a tick on the chosen one.
class TileDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// A tile fills its place in the grid.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        return static_cast<const QListView *>(option.widget)->gridSize();
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QPalette &palette = option.palette;
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
        const QRect tile = option.rect.adjusted(0, 0, -tileGap, -tileGap);
        const LookColor ground = isChosen                                         ? LookColor::AccentSoft
                                 : option.state.testFlag(QStyle::State_MouseOver) ? LookColor::Raised
                                                                                  : LookColor::Surface;
        const LookColor edge = hasFocus   ? LookColor::Focus
                               : isChosen ? LookColor::Accent
                                          : LookColor::LineStrong;
        painter->save();
        paintRounded(*painter, tile, LookSpace::ControlRadius, ColorOf(ground, palette),
                     ColorOf(edge, palette), hasFocus ? LookSpace::Ring : 0);
        const QColor words = ColorOf(LookColor::Text, palette);
        painter->setPen(words);
        painter->setFont(isChosen ? FontOf(LookFont::Strong, option.font) : option.font);
        const int room = tickSize + 2 * LookSpace::Small;
        painter->drawText(tile.adjusted(room, LookSpace::Grid, -room, -LookSpace::Grid),
                          Qt::AlignCenter | Qt::TextWordWrap, index.data().toString());
        if (isChosen)
            PaintGlyph(*painter,
                       QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignTop,
                                           {tickSize, tickSize},
                                           tile.adjusted(LookSpace::Small, LookSpace::Small,
                                                         -LookSpace::Small, -LookSpace::Small)),
                       u"check"_s, ColorOf(LookColor::AccentText, palette));
        painter->restore();
    }
};

/// The products in rows of tiles. All arrow keys step through them.
class ProductTiles : public QListWidget
{
public:
    explicit ProductTiles(QWidget *parent) : QListWidget(parent)
    {
        setFlow(LeftToRight);
        setWrapping(true);
        setResizeMode(Adjust);
        setMovement(Static);
        setFrameShape(NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setMouseTracking(true);
        viewport()->setAutoFillBackground(false);
        setItemDelegate(new TileDelegate(this));
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        const int rows = std::max(1, (count() + tilesInRow - 1) / tilesInRow);
        const int tile = HeightOf(LookHeight::Field, fontMetrics()) * 2;
        // A row that is exactly as wide as the view would be wrapped.
        setGridSize({std::max(1, (viewport()->width() - 1) / tilesInRow), tile + tileGap});
        setFixedHeight(rows * (tile + tileGap));
        QListWidget::resizeEvent(event);
    }
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override
    {
        if (action == MoveDown || action == MoveUp) {
            const int row = currentRow() + (action == MoveDown ? 1 : -1);
            return model()->index(std::clamp(row, 0, count() - 1), 0);
        }
        return QListWidget::moveCursor(action, modifiers);
    }
};

} // namespace

NewQuoteDialog::NewQuoteDialog(QuoteSession &session, int productID, QWidget *parent)
    : QDialog(parent), lbProducts(new ProductTiles(this)), list(new ClientList(this)), m_session(session)
{
    setWindowTitle(tr("New quote"));
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_newClient = buttons->addButton(QString(), QDialogButtonBox::ActionRole);
    m_newClient->setObjectName(u"btnNewClient"_s);
    m_newClient->setAutoDefault(false);
    QPushButton *const later = buttons->addButton(tr("Client &later"), QDialogButtonBox::ActionRole);
    later->setObjectName(u"btnLater"_s);
    later->setToolTip(tr("Begins the quote without a client"));
    later->setAutoDefault(false);
    m_begin = buttons->button(QDialogButtonBox::Ok);
    m_begin->setText(tr("&Begin"));
    m_begin->setIcon({});

    auto *const lblProduct = new QLabel(tr("&Product"), this);
    lblProduct->setBuddy(lbProducts);
    lbProducts->setObjectName(u"lbProducts"_s);
    lbProducts->setAccessibleName(tr("Product"));
    for (const Product &product : session.catalogue().products()) {
        if (!hasProductEditor(product.productID))
            continue;
        auto *const item = new QListWidgetItem(shortText(product.name), lbProducts);
        item->setData(Qt::UserRole, product.productID);
        item->setToolTip(tipText(product.name));
        if (product.productID == productID || lbProducts->count() == 1)
            lbProducts->setCurrentItem(item);
    }
    auto *const lblClient = new QLabel(tr("&Client"), this);
    lblClient->setBuddy(list->edFind);
    list->setClients(fetch(session.store(), parent, [](QuoteStore &quotes) { return quotes.clients(); }));

    QVBoxLayout *const layout = layOutDialog(*this, *buttons);
    layout->addWidget(lblProduct);
    layout->addWidget(lbProducts);
    layout->addWidget(lblClient);
    layout->addWidget(list, 1);
    resize(680, 500);
    rememberSize(*this, u"NewQuote"_s);

    connect(lbProducts, &QListWidget::currentItemChanged, this, &NewQuoteDialog::showButtons);
    connect(lbProducts, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(list, &ClientList::openWanted, this, &QDialog::accept);
    connect(list, &ClientList::clientChosen, this, &NewQuoteDialog::showButtons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_newClient, &QPushButton::clicked, this, &NewQuoteDialog::addClient);
    connect(later, &QPushButton::clicked, this, [this] {
        list->chooseClient(0);
        accept();
    });
    showButtons();
    lbProducts->setFocus();
}

/// The name that was looked for and belongs to no client; blank when clients were found.
QString NewQuoteDialog::unknownName() const
{
    const QString typed = list->edFind->text().simplified();
    return list->lvClients->Items().Count() == 0 ? typed : QString();
}

/// A name that is not found becomes the button for a new client, which Enter presses.
void NewQuoteDialog::showButtons()
{
    const QString unknown = unknownName();
    m_newClient->setText(
        unknown.isEmpty()
            ? tr("&New client ...")
            : tr("&New client \"%1\"").arg(shortText(unknown, longestName).replace(u'&', u"&&"_s)));
    m_begin->setEnabled(lbProducts->currentItem() != nullptr);
    (unknown.isEmpty() ? m_begin : m_newClient)->setDefault(true);
}

void NewQuoteDialog::addClient()
{
    attempt(this, [this] {
        if (const qint64 made = ClientsPage::addClient(m_session, this, unknownName())) {
            list->setClients(
                fetch(m_session.store(), this, [](QuoteStore &quotes) { return quotes.clients(); }));
            list->chooseClient(made);
        }
    });
}

NewQuoteDialog::~NewQuoteDialog() = default;

int NewQuoteDialog::productID() const
{
    const QListWidgetItem *const item = lbProducts->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

qint64 NewQuoteDialog::clientID() const
{
    return list->chosenClient();
}

} // namespace QuoteDesk
