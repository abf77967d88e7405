#include "desk/DraftRecovery.h"

#include "desk/ErrorDialog.h"
#include "desk/OpenQuotes.h"
#include "desk/RecoveryDialog.h"
#include "quote/QuoteSession.h"
#include "quote/ServerWait.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace QuoteDesk
{
namespace
{

/// The drafts of the store and of this computer's file, each once, with its location.
struct Found {
    QList<Draft> drafts;   ///< latest first
    QSet<QString> inStore; ///< keys
    QSet<QString> here;    ///< keys of drafts whose later state is on this computer
};

Found merged(const QList<Draft> &stored, const QList<Draft> &keptHere)
{
    Found found{stored, {}, {}};
    QHash<QString, qsizetype> places;
    for (const Draft &draft : stored) {
        places.insert(draft.key, places.size());
        found.inStore.insert(draft.key);
    }
    for (const Draft &draft : keptHere) {
        const auto place = places.constFind(draft.key);
        if (place == places.cend())
            found.drafts.append(draft);
        else if (found.drafts.at(*place).kept < draft.kept)
            found.drafts[*place] = draft;
        else
            continue;
        found.here.insert(draft.key);
    }
    std::stable_sort(found.drafts.begin(), found.drafts.end(),
                     [](const Draft &a, const Draft &b) { return a.kept > b.kept; });
    return found;
}

void offer(const Found &found, QuoteSession &session, OpenQuotes &quotes, QWidget *parent)
{
    RecoveryDialog dialog(found.drafts, session, parent);
    dialog.exec();
    const auto adoptStored = [&](const QString &key) {
        return fetch(session.store(), parent, [key](QuoteStore &store) { return store.adoptDraft(key); });
    };
    for (const QString &key : dialog.chosenKeys()) {
        const bool isHere = found.here.contains(key);
        switch (dialog.choice()) {
        case RecoveryDialog::Choice::Later:
            return;
        case RecoveryDialog::Choice::Restore:
            attempt(parent, [&] {
                quotes.restore(key, isHere ? session.drafts().adoptFromHere(key) : adoptStored(key));
            });
            break;
        case RecoveryDialog::Choice::Discard:
            attempt(parent, [&] {
                if (found.inStore.contains(key))
                    adoptStored(key);
                if (isHere)
                    session.drafts().adoptFromHere(key);
                session.drafts().drop(key);
            });
            break;
        }
    }
}

} // namespace

void offerDrafts(QuoteSession &session, OpenQuotes &quotes, QWidget *parent)
{
    session.store().ask(
        parent, [](QuoteStore &store) { return store.abandonedDrafts(); },
        [&session, &quotes, parent](std::future<QList<Draft>> answer) {
            QList<Draft> stored;
            try {
                stored = answer.get();
            } catch (const StoreUnreachable &) {
                // The drafts on this computer are available nevertheless.
            }
            const Found found = merged(stored, session.drafts().leftHere());
            if (!found.drafts.isEmpty())
                offer(found, session, quotes, parent);
        });
}

} // namespace QuoteDesk
