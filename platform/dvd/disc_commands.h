// How other threads' wishes come to the thread that reads a disc, and its answers back to them.
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace quorvex {

struct Command {
  std::function<HRESULT()> run;
  std::optional<HRESULT> answer;
};

class CommandDesk {
 public:
  // Anybody: hands in a command and waits for its answer, not for ever. Nothing when none came in time or
  // nobody works at the desk.
  std::optional<HRESULT> HandIn(std::function<HRESULT()> run, std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex);
    if (!open) return std::nullopt;
    const auto command = std::make_shared<Command>(Command{std::move(run), std::nullopt});
    waiting.push_back(command);
    news.notify_all();
    answered.wait_for(lock, limit, [&] { return command->answer || !open; });
    return command->answer;
  }

  [[nodiscard]] bool IsOpen() {
    const std::scoped_lock lock(mutex);
    return open;
  }

  // The reading thread's owner: before it starts, and for it to end.
  void Open() {
    const std::scoped_lock lock(mutex);
    open = true;
    waiting.clear();
  }
  void Close() {
    const std::scoped_lock lock(mutex);
    open = false;
    waiting.clear();
    news.notify_all();
    answered.notify_all();
  }

  // Anybody: the reading thread is to look what there is to do.
  void Ring() {
    const std::scoped_lock lock(mutex);
    rung = true;
    news.notify_all();
  }

  // Reading thread: the next command, if there is one.
  std::shared_ptr<Command> Take() {
    const std::scoped_lock lock(mutex);
    if (waiting.empty()) return nullptr;
    std::shared_ptr<Command> command = waiting.front();
    waiting.pop_front();
    return command;
  }
  void Answer(Command& command, HRESULT result) {
    const std::scoped_lock lock(mutex);
    command.answer = result;
    answered.notify_all();
  }
  // Reading thread: waits until there is something to do.
  void Await(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex);
    news.wait_for(lock, limit, [this] { return rung || !waiting.empty() || !open; });
    rung = false;
  }

 private:
  std::mutex mutex;  // guards what follows
  std::condition_variable news;
  std::condition_variable answered;
  std::deque<std::shared_ptr<Command>> waiting;
  bool open = false;
  bool rung = false;
};

}  // namespace quorvex
