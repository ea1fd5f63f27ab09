#pragma once

#include <functional>

#include "line/transfer.h"
#include "link/password_frame.h"

/// Sends the project to the connected panel, all of it or only what has changed, behind its
/// password, and tells the user what has come of it.
class Download {
 public:
  using Run = std::function<TransferOutcome(const TransferWatch&)>;

  /// `transfer` runs what it is given, with the menus locked and its progress shown.
  Download(PassWordFrame* passWord, std::function<TransferOutcome(const Run&)> transfer);

  /// Shows the password's boxes; what is to be sent behind it.
  void AskPassWord(bool changesAlone);
  /// Sends that if the password is right. True: the user would compare instead, and nothing was
  /// written.
  [[nodiscard]] bool Send();
  /// Sends all settings with the password in the boxes.
  void SendAll();

  /// A user who closes the window while a block is under way is asked at the top of the next one.
  bool PutsOffClose();
  void CloseWindowIfAsked();
  /// Asks before a panel is left half new.
  bool MayLeave() const;

 private:
  bool PassWordAccepted();
  bool ChangePassWord();
  bool SendChanged();
  bool AskInstead(const QString& why);
  TransferOutcome Transfer(const Run& run);

  PassWordFrame* passWord_;
  std::function<TransferOutcome(const Run&)> transfer_;
  bool changesAlone_ = false;
  enum class Writing { Nothing, TopOfBlock, Block } writing_ = Writing::Nothing;
  bool closeAsked_ = false;  ///< While a block was under way.
};
