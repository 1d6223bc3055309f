// A label: plain text, never markup, aligned to the top; each of the four line ends
// is one break. "&" is an ordinary character. Lines that don't fit the height at their
// font's spacing are set closer together; long lines are cut unless setWordWrap is on.
#pragma once
#include "platform/forms/control.h"

#include <QLabel>

namespace tolvek {

enum class Alignment { Left, Right, Centre };

class Label : public ControlOf<QLabel> {
    Q_OBJECT
public:
    Label(Container container, TextView name, TextView caption = {});

    const Text& Caption() const { return caption_; }
    void setCaption(TextView caption);
    Alignment TextAlignment() const { return alignment_; }
    void setTextAlignment(Alignment alignment);
    // Clicks go to the control below.
    void setMouseTransparent(bool transparent);
    // A right-aligned text that is longer than `room` twips is set in a narrower
    // face. What still doesn't fit is painted beyond the left edge of the label and
    // not cut; Left and Width don't change.
    void setOverflow(float room);
    // Screen readers call the control by this label's caption from now on, also when the
    // caption changes.
    void setBuddy(QWidget* control);
    // Looks like something to click, and a screen reader can press it: for a label
    // whose Click does something.
    void setClickable(bool clickable);
    bool Clickable() const { return clickable_; }
    void press(); // clicks as the user does; nothing happens while disabled

signals:
    void Click();

protected:
    void applyGeometry() override;
    void applyFont(const QFont& font) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void showCaption();

    Text caption_;
    Alignment alignment_ = Alignment::Left;
    bool clickable_ = false;
    float room_ = 0; // twips; 0 means that texts may be cut
};

}
