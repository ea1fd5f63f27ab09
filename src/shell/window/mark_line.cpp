#include "shell/window/mark_line.h"

#include <QEvent>

#include "panel/live_project.h"
#include "shell/window/saved_project.h"

MarkLine::MarkLine(const RecoveryCopy& recovery) : recovery_(recovery) {
  setObjectName(QStringLiteral("lblMark"));
  SetLook(Look::Quiet);
  SetElideMode(Qt::ElideMiddle);  // A refusal ends with what may stand there.
  constexpr int marksMs = 250;
  tmrMarks_ = new Timer(this, "tmrMarks", marksMs);
  tmrMarks_->Tick = [this] { LookAnew(); };
}

void MarkLine::LookAnew() {
  constexpr qint64 momentMs = 4000;
  const bool news = !news_.isEmpty() && (newsStays_ || newsShown_.ElapsedMs() < momentMs);
  if (!news) news_.clear();
  SetCaption(news                  ? news_
             : recovery_.Trouble() ? QStringLiteral("No copy of unsaved work can be kept")
             : recovery_.IsUnsaved(LiveProject) ? QStringLiteral("Unsaved changes")
                                                : QString());
}

void MarkLine::Tell(const QString& news, bool stays) {
  news_ = news;
  newsStays_ = stays;
  newsShown_.Restart();
  LookAnew();
}

bool MarkLine::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto& trouble = recovery_.Trouble();
    try {
      setToolTip(trouble ? QString::fromStdString(*trouble) : WhatHasChanged(recovery_));
    } catch (const RunTimeFailure& failure) {
      setToolTip(QString::fromUtf8(failure.what()));
    }
  }
  return Label::event(event);
}
