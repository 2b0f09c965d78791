#include "planner/posted_function.h"

#include <utility>

#include "base/text.h"
#include "planner/dispatch_call.h"

namespace {

class PostedFunction : public PageFunction {
 public:
  PostedFunction(PostBox& posts, ScriptFunctionPtr function)
      : m_posts(posts), m_function(std::move(function)) {}
  ~PostedFunction() override {
    // The last reference must not go on the HTTP thread.
    if (m_function) m_posts.Post([function = std::move(m_function)] {});
  }
  PostedFunction(const PostedFunction&) = delete;
  PostedFunction& operator=(const PostedFunction&) = delete;

  void Post(uint32_t code, WideString body) override {
    m_posts.Post([function = std::exchange(m_function, nullptr), code, body = std::move(body)] {
      CDispatchCall(function).Push(code).Push(WideToUtf8Lossy(body)).Invoke();
    });
  }

 private:
  PostBox& m_posts;
  ScriptFunctionPtr m_function;
};

}  // namespace

std::unique_ptr<PageFunction> MakePostedFunction(PostBox& posts, ScriptFunctionPtr function) {
  return std::make_unique<PostedFunction>(posts, std::move(function));
}
