#include "core/progress.h"

namespace {
ProgressFactory& factory() {
    static ProgressFactory f;
    return f;
}
} // namespace

std::unique_ptr<Progress> StartProgress(const QString& caption, bool cancellable, int showAfterMs) {
    if (factory())
        if (std::unique_ptr<Progress> p = factory()(caption, cancellable, showAfterMs))
            return p;
    return std::make_unique<SilentProgress>();
}

void setProgressFactory(ProgressFactory f) {
    factory() = std::move(f);
}
