#include "log/log_sinks.h"

#include "log/console_sink.h"
#include "log/file_sink.h"
#include "log/log_settings.h"
#include "log/network_sink.h"

namespace svcinst {

void deliver_record(TextView record) {
  if (log_settings.udp_socket != kNoSocket) return send_to_peer(log_settings.udp_socket, record);
  if (log_settings.tcp_socket != kNoSocket) return send_to_peer(log_settings.tcp_socket, record);
  deliver_to_file_or_console(record);
}

void deliver_to_file_or_console(TextView text) {
  if (log_settings.log_file != nullptr) return write_to_log_file(text);
  if (log_settings.std_handle != kNoConsole) write_to_console(text);
}

}  // namespace svcinst
