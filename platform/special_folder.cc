#include "platform/special_folder.h"

#include "errors/frame.h"
#include "system/ansi_text.h"
#include "system/services.h"

namespace scrivo {

std::string GetSpecialFolder(WindowHandle window, std::int32_t folder_id) {
  std::string path;
  IgnoringErrors([&] {
    std::uintptr_t item_list = 0;
    if (TheServices().shell->SpecialFolderLocation(window, folder_id, &item_list) != 0) return;
    IgnoringErrors([&] {
      std::string buffer(260, '\0');
      if (TheServices().desktop->PathFromItemList(item_list, buffer.data())) {
        path = FromAnsi(buffer.substr(0, buffer.find('\0')));
      }
    });
    TheServices().shell->FreeItemList(item_list);
  });
  return path;
}

}  // namespace scrivo
