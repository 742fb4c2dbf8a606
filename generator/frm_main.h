#pragma once

#include <memory>
#include <string>

#include "site/site.h"
#include "system/desktop.h"
#include "ui/button_strip.h"
#include "ui/form_views.h"
#include "ui/item_panel.h"
#include "writers/compile_job.h"

namespace scrivo {

class Steps;

// The compile dialog: the parameters of one compilation of the open web, and the driver behind its
// "Generate" button. It is a presenter: what the user sees is a ParameterView that Globals().views
// makes, or nothing at all, when the program has no windows. A caller loads the one instance,
// calls BuildUI, shows it (or sets the items and calls Generate), and unloads it.
//
// Procedures that are named "Kestrel.frmMain.…" in the error reports answer to the error handler:
// what they return after an abort is false or empty. All others, unless they say so, never throw.
class frmMain : public std::enable_shared_from_this<frmMain>, private ParameterViewEvents {
 public:
  // The one dialog; creates it, not shown, when it is not loaded.
  static std::shared_ptr<frmMain> Load();
  static bool IsLoaded();
  // Saves the parameters under the web that BuildUI took, closes the window and lets go of the
  // dialog. Nothing happens when it is not loaded.
  static void Unload();

  frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  // Takes the host's open web and its local folder and fills the items from the web and from the
  // settings saved for it. False when there is no open web, which the user has been told.
  bool BuildUI();
  // Shows the dialog until it is hidden or unloaded.
  void ShowModal();
  void Hide();
  // The dialog's window; 0 in a program without windows.
  WindowHandle Window();

  // The parameter panel: "TITLE" (text), "DEFAULTPAGE" (the page's address in its data), "OUTPUT"
  // (text), and the check boxes "USEKEYWORDS", "FAVORITES", "VIEWRESULT", "CLOSELOG" and
  // "LEAVEPROJECTFILE".
  ItemPanel& suiParams() { return params_; }
  // The buttons "GENERATE", "HELP" and "CLOSE" behind a spacer "SPACE".
  ButtonStrip& suiButtons() { return buttons_; }
  // The web that BuildUI took, null before.
  std::shared_ptr<SiteWeb> Web() const { return web_; }

  // One whole compilation: saves open pages, finds the compiler, frees the output file, writes the
  // project, compiles, shows the result, cleans up and unloads the dialog. An abort in the driver
  // itself leaves it at once, without cleaning up.
  void Generate();
  // The compile that the items ask for.
  CompileJob Job();

  // Offers to save the pages that are open with unsaved changes.
  void SaveModifiedPages();
  // True when the compiler's path is known and the file is there, if need be chosen by the user.
  bool FindCompiler();
  // Lets the user choose the compiler.
  bool SelectCompiler();
  // Offers to close the help viewer whose window has this title. True: the compilation stops.
  bool CloseHelpViewer(const std::string& title);

  // Writes the contents file. True when it was written.
  bool BuildContentFile();
  // The contents list of the children of `node` (without an entry for it): what it costs is
  // linear in the nodes, and no depth is too deep. A level that is aborted is left out.
  std::string EnumNodes(const std::shared_ptr<SiteNode>& node);
  // Writes the index file, or, when no page has a keyword, tells the user and clears the use-index
  // flag. True in both cases.
  bool BuildIndexFile();
  // The index list of all pages' keywords, "" when there are none.
  std::string UseKeywords();
  // Writes the derived-image page and the project file. True when they were written.
  bool BuildProjectFile();
  // Writes the page that links every file of the web's "_derived" folder.
  void LinksToDerived();

  // All files and all nodes of the web, in the order of the site model's collectors.
  SiteFiles AllFiles();
  SiteNodes AllNodes();

  // Where a page of the web that BuildUI took lies in it. Errors are the host's, and kObjectNotSet
  // without a web or a host.
  std::string LocationOf(const std::string& address) const;

  // Full paths of the files written so far, "" for one that was not made.
  const std::string& ContentsPath() const { return contents_path_; }
  const std::string& IndexPath() const { return index_path_; }
  const std::string& DerivedPath() const { return derived_path_; }
  const std::string& ProjectPath() const { return project_path_; }

  // Whether the project gets an index: set from "USEKEYWORDS" when the project is written, cleared
  // when no keyword was found.
  bool UseIndex() const { return use_index_; }
  void UseIndex(bool value) { use_index_ = value; }

 private:
  void Activated() override;
  void Resized(float strip_width, float panel_width) override;
  void ButtonClicked(const std::string& key) override;
  void ItemChanged(const std::string& key) override;
  void ItemButtonClicked(const std::string& key) override;
  void CloseRequested() override;

  // The web that BuildUI took. Raises Error (kObjectNotSet) when there is none.
  SiteWeb& OpenWeb() const;
  std::string Setting(const std::string& key, const std::string& value_when_missing) const;
  void FillDefaultPages(Steps& step);
  void SaveParameters();
  void ChooseOutput();
  // The window. Raises Error (kObjectNotSet) in a program without windows.
  ParameterView& View() const;

  // LocationOf for the writers.
  Locator Locations() const;

  // Statements of Generate.
  void CompileAndShow(Steps& step);
  bool BuildSources(Steps& step);
  void ShowResult();
  void RemoveProjectFiles();

  ItemPanel params_;
  ButtonStrip buttons_;
  std::shared_ptr<ParameterView> view_;  // null in a program without windows
  std::shared_ptr<SiteWeb> web_;
  std::string contents_path_;
  std::string index_path_;
  std::string derived_path_;
  std::string project_path_;
  bool use_index_ = false;
};

// Where a page lies inside `web`, as the host tells it, with "/" between folder names. Errors are
// the host's; kObjectNotSet when no host is connected.
std::string PageLocation(SiteWeb& web, const std::string& address);

// The same for the web that is open in the host, and never an error: "" when no web is open or the
// host cannot tell.
std::string RelativeLocation(const std::string& address);

}  // namespace scrivo
