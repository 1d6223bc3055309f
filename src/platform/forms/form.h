// The base class of every window and dialog.
//
// A form object outlives its window: Load builds the window with all its controls
// (buildControls) and fires Form_Load, Unload fires Form_Unload and destroys the
// window. The object's own variables keep their values in between. Its pointers to
// controls are valid only while it is loaded; buildControls sets all of them again.
// A slot may unload its own form: the window is deleted after the event has
// finished.
//
// Left, Top, Width and Height are whole twips of the frame. A value set by code is
// kept (7404, although that is 493.6 pixels) until the user moves or resizes the
// window. A form for which the screen has no room keeps its size, and its window
// scrolls.
//
// Form_Load, Form_Resize, Form_Unload and Form_QueryUnload are events: an error
// that leaves one goes to the untrapped handler. An exception from buildControls
// goes to the caller. Loading and unloading keep the user's input back (InputHold).
#pragma once
#include "platform/forms/buttons.h"

#include <QPointer>

#include <functional>
#include <memory>

class QEventLoop;
class QMenuBar;

namespace tolvek {

class FormWindow;
class WaitScope;

enum class BorderStyle { None, FixedDialog, Sizable };
enum class WindowStates { Normal = 0, Minimized = 1, Maximized = 2 };
enum class UnloadMode { ControlMenu, Code }; // by the close box, or by Unload

class Form {
public:
    explicit Form(TextView name, BorderStyle border = BorderStyle::Sizable);
    virtual ~Form(); // destroys an existing window without firing events
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    void Load();                           // does nothing if loaded
    void Show();                           // loads and shows, doesn't wait
    void ShowModal(Form* owner = nullptr); // loads, shows, returns when unloaded
    void Unload();                         // does nothing if not loaded
    void Refresh();                        // paints at once
    bool Loaded() const { return window_ != nullptr; }
    bool Visible() const;

    const Text& Name() const { return name_; }
    const Text& Caption() const { return caption_; }
    void setCaption(TextView caption);
    Colour BackColor() const { return backColor_; }
    void setBackColor(Colour colour);

    float Left() const { return left_; }
    float Top() const { return top_; }
    float Width() const { return width_; }
    float Height() const { return height_; }
    void setLeft(float twips);
    void setTop(float twips);
    void setWidth(float twips); // fires Form_Resize while loaded, if the value changes
    void setHeight(float twips);
    void CentreOnScreen();
    void CentreOver(const Form& owner);

    int WindowState() const;        // 0 normal, 1 minimised, 2 maximised
    void setWindowState(int state); // other values: error 380

    // Enter and Escape press these buttons; without a button the key does nothing.
    // Set in buildControls. A disabled button isn't pressed.
    void setDefaultButton(CommandButton* button);
    void setCancelButton(CommandButton* button) { cancelButton_ = button; }
    // If off, the user can't close the window.
    void setControlBox(bool controlBox) { controlBox_ = controlBox; }
    // The frame outside the client area counts kTitleTwipsHigh instead of
    // kFrameTwipsHigh: the form never has a menu bar. Called in a form's
    // constructor.
    void setTitleOnly() { frameHigh_ = kTitleTwipsHigh; }

    Control* ActiveControl() const; // the control with the focus, or null
    // Disables and enables controls by `switching`. The control with the focus keeps it,
    // also while it is disabled, as on the classic platform: it hears no key then, and a
    // screen reader isn't led to another control.
    void KeepFocusDuring(const std::function<void()>& switching);
    // A disabled control gives its focus to the next one.
    void SettleFocus();
    // The control of that name; null if the form isn't loaded or has none.
    QWidget* control(TextView name) const;
    QWidget& client() const; // the parent of the controls
    QMenuBar& menuBar();     // created at the first call
    QWidget* window() const; // null while not loaded

protected:
    virtual void buildControls() {}
    virtual void Form_Initialize() {} // once per object, before its first Form_Load
    virtual void Form_Load() {}
    virtual void Form_Resize() {} // when first shown and after each change of size
    virtual void Form_QueryUnload(UnloadMode) {}
    virtual void Form_Unload() {} // may be entered again through an Unload inside it

private:
    friend class FormWindow;
    void buildWindow();
    void present();
    void unload(UnloadMode mode);
    void destroyWindow();
    void endModalLoop();
    void setSize(float& side, float& asSet, float twips);
    void applySize();
    void applyPosition();
    void windowResized(const QSize& client);
    void windowMoved(const QPoint& corner);
    void fireResize();
    bool keyPressed(int key);
    QSize clientPixels() const;
    QPoint cornerPixels() const;
    FormWindow& built() const;

    Text name_;
    Text caption_;
    BorderStyle border_;
    bool controlBox_ = true;
    int frameHigh_ = kFrameTwipsHigh;
    bool initialised_ = false;
    bool shown_ = false;
    bool placed_ = false;
    Colour backColor_ = kButtonFace;
    float left_ = 0, top_ = 0, width_ = 4800, height_ = 3600;
    // The values last set by code: pixels that agree with them count as unchanged.
    float leftAsSet_ = 0, topAsSet_ = 0, widthAsSet_ = 4800, heightAsSet_ = 3600;
    WindowStates state_ = WindowStates::Normal; // takes effect when the form is shown
    QPointer<QWidget> window_;
    QPointer<CommandButton> defaultButton_;
    QPointer<CommandButton> cancelButton_;
    QEventLoop* modalLoop_ = nullptr;
    WaitScope* modalWait_ = nullptr;
};

// The loaded forms, in the order of loading.
class Forms {
public:
    static int Count();
    static Form& item(int index); // error 9 if outside
};

}
