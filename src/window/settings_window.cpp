#include "window/settings_window.h"

#include "app/settings_file.h"
#include "platform/forms/screen.h"
#include "window/frm_tolvek.h"

#include <cmath>

namespace tolvek {

namespace {

// The settings file holds whole twips, forms hold fractions of them.
std::int32_t wholeTwips(float twips)
{
    return static_cast<std::int32_t>(std::lround(twips));
}

float asMeasure(std::int32_t twips)
{
    return static_cast<float>(twips);
}

class MainWindow : public WindowPlacement {
public:
    explicit MainWindow(frmTolvek& form) : form_(form) {}
    std::int32_t Top() const override { return wholeTwips(form_.Top()); }
    std::int32_t Left() const override { return wholeTwips(form_.Left()); }
    std::int32_t Width() const override { return wholeTwips(form_.Width()); }
    std::int32_t Height() const override { return wholeTwips(form_.Height()); }
    void setTop(std::int32_t twips) override { form_.setTop(asMeasure(twips)); }
    void setLeft(std::int32_t twips) override { form_.setLeft(asMeasure(twips)); }
    void setWidth(std::int32_t twips) override { form_.setWidth(asMeasure(twips)); }
    void setHeight(std::int32_t twips) override { form_.setHeight(asMeasure(twips)); }
    int WindowState() const override { return form_.WindowState(); }
    std::int32_t ScreenWidth() const override { return wholeTwips(Screen::Width()); }
    std::int32_t ScreenHeight() const override { return wholeTwips(Screen::Height()); }

private:
    frmTolvek& form_;
};

}

void iniRead(frmTolvek& form)
{
    MainWindow window(form);
    iniRead(window);
}

void iniWrite(frmTolvek& form)
{
    iniWrite(MainWindow(form));
}

}
