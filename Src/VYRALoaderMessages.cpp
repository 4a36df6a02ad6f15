// Messages between plugins, and from and to the host.
#include "VYRALoaderDispatch.h"

namespace {

void SendToOne(VYRAPluginID sender, VYRAPluginID receiver, int message, void* param) {
  if (!VYRARegistryHolds(receiver)) return;
  const auto receiveMessage = VYRARegistryRecord(receiver).receiveMessage;
  if (receiveMessage == nullptr) return;
  const StDispatchCallback dispatch(receiver, VYRA_CALL_MESSAGE);
  if (dispatch()) receiveMessage(sender, message, param);
}

}  // namespace

void VYRASendMessageToPlugin(VYRAPluginID plugin, int message, void* param) {
  const VYRAPluginID sender = VYRAGetMyID();
  if (plugin != VYRA_NO_PLUGIN) {
    SendToOne(sender, plugin, message, param);
    return;
  }
  // Plugins that a receiver causes to be loaded were not there when the message was sent.
  const int count = VYRACountPlugins();
  for (VYRAPluginID receiver = 0; receiver < count; ++receiver) SendToOne(sender, receiver, message, param);
}
