// A small Qt window whose F1 key opens the help for the field in focus. The window stays alive while the help opens.
#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QThreadPool>
#include <QWidget>
#include <olh/olh.hpp>

namespace {

constexpr const char* kManual = "olh_manual";
constexpr struct {
  const char* label;
  const char* topic;  // of the manual
} kFields[] = {{"Documentation", "search_path"}, {"Browser", "viewers"}, {"Result", "result_codes"}};

class Form : public QWidget {
 public:
  Form() : status_(new QLabel("F1 helps with the field in focus.")) {
    setWindowTitle("Form with help");
    auto* form = new QFormLayout(this);
    for (const auto& field : kFields) {
      auto* entry = new QLineEdit;
      entry->setObjectName(field.topic);
      form->addRow(field.label, entry);
    }
    form->addRow(status_);
    auto* help = new QShortcut(QKeySequence(QKeySequence::HelpContents), this);
    connect(help, &QShortcut::activated, this, &Form::help);
    // One thread for all calls: a call may take seconds, and the library wants one caller at a time.
    caller_.setMaxThreadCount(1);
  }

 private:
  void help() {
    const std::string topic = focusWidget() != nullptr ? focusWidget()->objectName().toStdString() : "";
    status_->setText("Opening the help ...");
    caller_.start([this, topic] {
      const olh::Result shown = olh::show(kManual, topic);
      // Back to the thread of the window, the only one that may touch it.
      QMetaObject::invokeMethod(this, [this, shown] { tell(shown); });
    });
  }

  void tell(olh::Result shown) { status_->setText(shown ? "Help is in your browser." : shown.message()); }

  QLabel* status_;
  QThreadPool caller_;  // at its end a call that has begun comes to its own
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Form form;
  form.show();
  return QApplication::exec();
}
