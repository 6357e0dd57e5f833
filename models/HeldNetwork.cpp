#include "models/HeldNetwork.h"

#include <chrono>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

namespace tavelo::models {

void EndNetwork::operator()(QNetworkAccessManager* network) const {
  constexpr std::chrono::milliseconds limit{200};
  std::promise<void> ended;
  const auto end = ended.get_future();
  // Any thread may delete an object that belongs to none.
  network->moveToThread(nullptr);
  try {
    std::thread([network, ended = std::move(ended)]() mutable {
      delete network;
      ended.set_value();
    }).detach();
    end.wait_for(limit);
  } catch (const std::system_error&) {
    delete network;
  }
}

}  // namespace tavelo::models
