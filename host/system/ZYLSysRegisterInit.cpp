// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysRegisterInit.h"

#include "ZYLSysException.h"
#include "ZYLSysLogging.h"
#include "ZYLSysSettings.h"

#include <QList>

namespace {

struct InitState {
    QList<std::function<void()>> pending;
    bool initialized = false;
};

// Modules register from their static initialisers; a function-local static exists by then
// whatever the order in which the libraries were loaded.
InitState &State()
{
    static InitState state;
    return state;
}

void RunGuarded(const std::function<void()> &callback, int number)
{
    try {
        callback();
    } catch (const ZYLSysException &error) {
        qCWarning(lcZYLSystem).noquote() << "Initialisation callback" << number
                                         << "failed:" << error.GetMessage();
    } catch (const std::exception &error) {
        qCWarning(lcZYLSystem).noquote() << "Initialisation callback" << number
                                         << "failed:" << error.what();
    } catch (...) {
        qCWarning(lcZYLSystem) << "Initialisation callback" << number << "failed";
    }
}

} // namespace

bool ZYLSysRegisterInit(std::function<void()> callback)
{
    if (!callback)
        return false;
    InitState &state = State();
    if (state.initialized)
        RunGuarded(callback, 0);
    else
        state.pending.append(std::move(callback));
    return true;
}

int ZYLSysRunInitCallbacks()
{
    InitState &state = State();
    if (state.initialized)
        return 0;
    ZYLSysSettings::RestoreAll();
    int count = 0;
    // Index loop: a callback may register another one, which then runs in this same pass.
    for (; count < state.pending.size(); ++count) {
        const std::function<void()> callback = state.pending.at(count);
        RunGuarded(callback, count + 1);
    }
    state.pending.clear();
    state.initialized = true;
    return count;
}

bool ZYLSysIsInitialized()
{
    return State().initialized;
}
