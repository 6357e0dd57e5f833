#include "app/ProgramRenewal.h"

#include <utility>

namespace tavelo {
namespace {

using platform::ProgramFile;

/// From the first change to the look. A package's files change within a second.
constexpr platform::Seconds settling{2.0};
/// Between two looks whether the program is still busy.
constexpr platform::Seconds patience{0.5};

}  // namespace

ProgramRenewal::ProgramRenewal(platform::MainQueue& mainQueue, Program program)
    : mainQueue_(mainQueue), program_(std::move(program)) {}

void ProgramRenewal::somethingChanged() {
  if (std::exchange(willLook_, true)) return;
  mainQueue_.asyncAfter(settling, lifetime_.guard([this] { look(); }));
}

void ProgramRenewal::look() {
  willLook_ = false;
  const auto now = program_.file();
  if (std::exchange(told_, now) == now) return;
  if (now == ProgramFile::replaced) program_.tellReplaced();
  if (now == ProgramFile::removed) program_.tellRemoved();
}

void ProgramRenewal::restart() {
  if (std::exchange(restarting_, true)) return;
  // Not at once: the command that asked waits for its answer.
  mainQueue_.asyncAfter(patience, lifetime_.guard([this] { startAgainWhenIdle(); }));
}

void ProgramRenewal::startAgainWhenIdle() {
  if (program_.isBusy()) {
    mainQueue_.asyncAfter(patience, lifetime_.guard([this] { startAgainWhenIdle(); }));
    return;
  }
  restarting_ = false;
  // The running program is better than none.
  if (program_.file() != ProgramFile::removed) program_.startAgain();
}

}  // namespace tavelo
