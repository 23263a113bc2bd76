#include "exceptions/fine_view.h"

namespace quilla {

void clearKinds(FineView& view)
{
    for (const FineKind kind : FineKinds)
        view.setTicked(kind, false);
    view.setTickable(FineKind::Lost, true);
}

void clearFine(FineView& view, int first)
{
    for (int index = first; index < FineBox::Count; ++index)
        view.setBox(index, {});
    clearKinds(view);
    for (const FineKind kind : FineKinds)
        view.setWorking(kind, {});
}

} // namespace quilla
