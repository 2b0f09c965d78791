#pragma once

#include <memory>

#include "net/request_queue.h"
#include "planner/post_box.h"
#include "planner/script_value.h"

/// A function of the page's that waits in a request queue for the answer. It is called, and let go,
/// on the window's thread only, by way of the box, which must outlive it.
std::unique_ptr<PageFunction> MakePostedFunction(PostBox& posts, ScriptFunctionPtr function);
