// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapcatalog.h"
#include <functional>
#include <QMetaType>
#include <QObject>
#include <QTest>
#include <QTimerEvent>

using Function = std::function<void()>;
/** Something that is done with a catalogue. */
using Step = std::function<void(MapCatalog *)>;
Q_DECLARE_METATYPE(Step)

/** Calls the function in every pass of the event loop, or only in one of them. */
class EveryPass : public QObject
{
public:
    explicit EveryPass(Function function, int only = 0)
        : m_function(std::move(function))
        , m_only(only)
    {
        startTimer(0);
    }
    bool hasCalled() const { return m_calls > 0; }
    int calls() const { return m_calls; }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        if (m_only != 0 && ++m_passes != m_only)
            return;
        if (m_only != 0)
            killTimer(event->timerId());
        ++m_calls;
        m_function();
    }

private:
    const Function m_function;
    const int m_only;
    int m_passes = 0;
    int m_calls = 0;
};

/**
 * The pass to try after this one. The first four are tried always, of the next sixteen a third:
 * another one each time, so that several inner steps together come to all. The looks at the 256
 * tile folders are taken in bigger steps. With VEXA_EVERY_PASS in the environment all of the first
 * twenty are tried.
 */
inline int nextPass(int pass, int round)
{
    if (pass >= 20)
        return pass + 97;
    if (pass < 4 || qEnvironmentVariableIsSet("VEXA_EVERY_PASS"))
        return pass + 1;
    return pass == 4 ? pass + 1 + round % 3 : pass + 3;
}

/**
 * Runs the outer step again and again with the inner one in its first pass, then in a later one,
 * and so on to its last.
 */
inline void inEveryPass(const Function &prepare, const Function &outer, const Function &inner,
                        const Function &verify)
{
    static int round = 0;
    ++round;
    bool wasInside = true;
    int passes = 0;
    for (int pass = 1; wasInside; pass = nextPass(pass, round)) {
        prepare();
        EveryPass poke(inner, pass);
        outer();
        wasInside = poke.hasCalled();
        if (wasInside) {
            ++passes;
            verify();
        }
        if (QTest::currentTestFailed()) {
            qWarning("in pass %d", pass);
            return;
        }
    }
    QVERIFY(passes > 1);
}
