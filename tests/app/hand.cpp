// Sits before a real packwise: a plugin that Qt loads into the program when the environment says
// so. It takes the steps of PACKWISE_STEPS, each once its window or button can be used: "frmMain"
// closes that window, "cmdClient" presses that button, "Yes" answers a box.
#include <QAbstractButton>
#include <QApplication>
#include <QGenericPlugin>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>

using namespace Qt::Literals;

class Hand : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "hand.json")
public:
    QObject* create(const QString&, const QString&) override {
        steps_ = qEnvironmentVariable("PACKWISE_STEPS").split(u' ');
        timer_.setInterval(5);
        timer_.callOnTimeout(&timer_, [this] { step(); });
        timer_.start();
        return new QObject;
    }

private:
    void step() {
        const QWidgetList widgets = QApplication::allWidgets();
        const auto found = std::find_if(widgets.begin(), widgets.end(), [this](QWidget* widget) {
            return !steps_.isEmpty() && widget->isVisible() && widget->isEnabled() &&
                   (widget->objectName() == steps_.front() || isInBox(widget));
        });
        if (found == widgets.end()) {
            return;
        }
        steps_.removeFirst();
        // Not from within the timer, which a box that the step opens would then wait for.
        QMetaObject::invokeMethod(
            *found,
            [widget = *found] {
                auto* const button = qobject_cast<QAbstractButton*>(widget);
                button ? button->click() : void(widget->close());
            },
            Qt::QueuedConnection);
    }

    bool isInBox(QWidget* widget) const {
        auto* const button = qobject_cast<QAbstractButton*>(widget);
        return button && qobject_cast<QMessageBox*>(widget->window()) &&
               button->text().remove(u'&') == steps_.front();
    }

    QStringList steps_;
    QTimer timer_;
};

#include "hand.moc"
