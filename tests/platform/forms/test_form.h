// A form whose events a test defines and counts.
#pragma once
#include "platform/forms/form.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvek::test {

class TestForm : public Form {
public:
    explicit TestForm(TextView name = u"frmTest", BorderStyle border = BorderStyle::Sizable)
        : Form(name, border)
    {
    }

    std::function<void(TestForm&)> build, initialize, load, resize, unloading;
    std::function<void(UnloadMode)> query;
    std::vector<std::string> events;

protected:
    void buildControls() override
    {
        events.emplace_back("build");
        if (build) build(*this);
    }
    void Form_Initialize() override { run("initialize", initialize); }
    void Form_Load() override { run("load", load); }
    void Form_Resize() override { run("resize", resize); }
    void Form_Unload() override { run("unload", unloading); }
    void Form_QueryUnload(UnloadMode mode) override
    {
        if (query) query(mode);
    }

private:
    void run(const char* event, const std::function<void(TestForm&)>& body)
    {
        events.emplace_back(event);
        if (body) body(*this);
    }
};

// A form that is shown, large enough for single controls.
class ShownForm : public TestForm {
public:
    ShownForm()
    {
        setWidth(9000);
        setHeight(9000);
    }
    template <class Kind, class... Arguments> Kind& add(Arguments&&... arguments)
    {
        Load();
        return *new Kind(*this, std::forward<Arguments>(arguments)...);
    }
};

}
