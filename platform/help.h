#pragma once

namespace scrivo {

// Opens the first page of the add-in's own help file, "Scrivo.CHM" beside the running library. Its
// owner is the window that Globals().help_owner tells. What the viewer answers is not looked at;
// never raises.
void ShowHelp();

}  // namespace scrivo
