#pragma once

#include "tests/planner/bridge_fixture.h"

/// A page that is ready, with `window.external` to call.
class External : public BridgeTest {
 protected:
  External() { BringUp(); }
};
