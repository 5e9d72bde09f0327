// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/enginesession.h"
#include "host/shared/networkbinding.h"
#include "host/shared/regionmodel.h"
#include <memory>

/**
 * What works on the maps in use, in the order in which the parts depend on each other. An engine
 * that was stopped cannot be started again: whoever needs one makes another of these.
 */
struct OpenDataSet
{
    /** Loads the catalogue and runs the event loop meanwhile. The network is not owned. */
    OpenDataSet(const QString &baseUri, NetworkState *network)
        : engine(baseUri)
        , binding(std::make_unique<NetworkBinding>(network, engine.installer()))
        , regions(engine.catalog(), engine.installer())
    { }

    EngineSession engine;
    std::unique_ptr<NetworkBinding> binding; // null once the engine rests
    RegionModel regions;
};
