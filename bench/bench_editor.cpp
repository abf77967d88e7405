// Filling the investor list of a product editor from the host's clients.

#include "BenchViews.h"

#include "editor/frm_BaseProductEditor.h"
#include "host/Modulefrm.h"
#include "host/Quoteclients.h"
#include "host/Zelutils.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace
{

class BenchForm : public TfrmBaseProductEditor
{
public:
    BenchForm() { last = this; }
    void SetUpProduct(bool) override {}

    static inline QPointer<BenchForm> last;
};

void fillClients(benchmark::State &state)
{
    TBaseClients master;
    master.BeginUpdate();
    for (int i = 0; i < state.range(0); ++i)
        master.Add(std::make_unique<TBaseClient>(u"Client %1"_s.arg(i)));
    master.EndUpdate();
    ZelSystem().Items().SetItem(u"MASTERCLIENTS"_s, &master);
    {
        TQuoteInfo info;
        TCustomQuoteEditor editor;
        editor.Set_QuoteInfo(&info);
        TfrmBaseProductEditor::Execute<BenchForm>(&editor, true);
        for (auto _ : state)
            BenchForm::last->LoadClients();
        StandardModuleManager().CloseAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    ZelSystem().Items().Clear();
}
BENCHMARK(fillClients)->Name("editor.clients")->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return BenchViews::run(argc, argv);
}
