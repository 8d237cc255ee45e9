/* Prints what the tool's help prints, at a time of its own. */
#include <stdio.h>

static const char kHelp[] =
    "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] "
    "install/uninstall a executable file as a windows servic.\n"
    "\n"
    "\n"
    "\n"
    "  -u, --uninstall               uninstall a service by name.\n"
    "  -i, --install                 install as service\n"
    "  -n, --name                    service name.\n"
    "  -b, --binpath                 service execute file path.\n"
    "  -t, --type                    start type: auto.\n"
    "  -d, --disname                 service display name.\n"
    "  --dep                         depend service name.\n"
    "  --desc                        service description.\n"
    "\n";

int main(void) {
  fwrite(kHelp, 1, sizeof kHelp - 1, stdout);
  return 255;
}
