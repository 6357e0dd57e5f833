#include "platform/linux/x11/windows/ClientProcess.h"

#include <cstdlib>
#include <memory>

#include <xcb/res.h>
#include <xcb/xcb.h>

namespace tavelo::linuxdesktop {

std::optional<platform::ProcessIdentifier> processOfClient(xcb_connection_t* connection,
                                                           std::uint32_t window) {
  const auto* extension = xcb_get_extension_data(connection, &xcb_res_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  const xcb_res_client_id_spec_t asked{.client = window, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const std::unique_ptr<xcb_res_query_client_ids_reply_t, decltype(&std::free)> reply(
      xcb_res_query_client_ids_reply(connection, xcb_res_query_client_ids(connection, 1, &asked), nullptr),
      &std::free);
  if (!reply) return std::nullopt;
  for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
       xcb_res_client_id_value_next(&each)) {
    if ((each.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 && each.data->length >= 4)
      return static_cast<platform::ProcessIdentifier>(*xcb_res_client_id_value_value(each.data));
  }
  return std::nullopt;
}

}  // namespace tavelo::linuxdesktop
