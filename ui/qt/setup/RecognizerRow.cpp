#include "ui/qt/setup/RecognizerRow.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>

#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/ModelTexts.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

constexpr int progressSteps = 1000;

QString megabytes(std::int64_t bytes) {
  return QString::number(static_cast<double>(bytes) / 1e6, 'f', 1).replace('.', ',');
}

QString describe(const RecognizerSetup::Progress& progress) {
  const QString amount =
      progress.total
          ? QString(setuptexts::megabytesOf).arg(megabytes(progress.received), megabytes(*progress.total))
          : QString(setuptexts::megabytes).arg(megabytes(progress.received));
  return QString(progress.isLibrary ? setuptexts::fetchingLibrary : setuptexts::fetchingModel).arg(amount);
}

}  // namespace

RecognizerRow::RecognizerRow(const SetupDesktop& desktop, RecognizerSetup& setup, QWidget* parent)
    : SetupRow(setuptexts::recognizer, parent),
      setup_(setup),
      isFixed_(!desktop.variable(SetupDesktop::Choice::recognizer).empty()) {
  addModels();
  addProgress();
  const auto condition = desktop.recognizer(false);
  addServer(condition.state == RecognizerCondition::State::server ? condition.detail : std::string());
  failure_ = addParagraph();
  explainVariable(desktop.variable(SetupDesktop::Choice::recognizer));
  setup_.onChange = [this] { refresh(); };
  refresh();
}

RecognizerRow::~RecognizerRow() { setup_.onChange = nullptr; }

void RecognizerRow::addModels() {
  auto* controls = addControls();
  auto* label = new QLabel(setuptexts::modelLabel, this);
  models_ = new QComboBox(this);
  label->setBuddy(models_);
  models_->setAccessibleName(setuptexts::model);
  const auto installed = setup_.installedModel();
  for (const auto& each : models::knownModels()) {
    models_->addItem(QString::fromStdString(textOf(each).title));
    if (installed == each.name) models_->setCurrentIndex(models_->count() - 1);
  }
  controls->addWidget(label);
  controls->addWidget(models_, 1);
  fetch_ = addButton(controls, setuptexts::fetch);
  folder_ = addButton(controls, setuptexts::fromFolder);
  facts_ = addParagraph();
  QObject::connect(models_, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
  QObject::connect(fetch_, &QPushButton::clicked, this, [this] { setup_.fetch(model()); });
  QObject::connect(folder_, &QPushButton::clicked, this, [this] { chooseFolder(); });
}

void RecognizerRow::addProgress() {
  auto* controls = addControls();
  progress_ = new QProgressBar(this);
  progress_->setAccessibleName(setuptexts::progress);
  progress_->setRange(0, progressSteps);
  controls->addWidget(progress_, 1);
  pause_ = addButton(controls, setuptexts::pause);
  cancel_ = addButton(controls, setuptexts::cancel);
  QObject::connect(pause_, &QPushButton::clicked, this,
                   [this] { setup_.fetchState() == FetchState::paused ? setup_.resume() : setup_.pause(); });
  QObject::connect(cancel_, &QPushButton::clicked, this, [this] { setup_.cancel(); });
}

void RecognizerRow::addServer(const std::string& address) {
  auto* controls = addControls();
  auto* label = new QLabel(setuptexts::serverLabel, this);
  server_ = new QLineEdit(QString::fromStdString(address), this);
  label->setBuddy(server_);
  server_->setAccessibleName(setuptexts::server);
  server_->setPlaceholderText(setuptexts::serverExample);
  controls->addWidget(label);
  controls->addWidget(server_, 1);
  useServer_ = addButton(controls, setuptexts::useServer);
  const auto use = [this] {
    if (useServer_->isEnabled()) setup_.useServer(server_->text().trimmed().toStdString());
  };
  QObject::connect(useServer_, &QPushButton::clicked, this, use);
  QObject::connect(server_, &QLineEdit::returnPressed, this, use);
  QObject::connect(server_, &QLineEdit::textChanged, this, [this] { refresh(); });
}

void RecognizerRow::refresh() {
  if (failure_ == nullptr) return;
  showLine(setup_.line());
  const auto text = textOf(model());
  facts_->setText(QString::fromStdString(text.facts + "\n" + text.merit));
  const auto state = setup_.fetchState();
  const bool isBusy = state != FetchState::none && state != FetchState::failed;
  const bool isInstalled = setup_.installedModel() == model().name;
  fetch_->setText(isInstalled ? setuptexts::fetchAgain : setuptexts::fetch);
  fetch_->setAccessibleName(accessibleNameOf(isInstalled ? setuptexts::fetchAgain : setuptexts::fetch));
  for (QWidget* each :
       {static_cast<QWidget*>(models_), static_cast<QWidget*>(fetch_), static_cast<QWidget*>(folder_)})
    each->setEnabled(!isFixed_ && !isBusy);
  server_->setEnabled(!isFixed_);
  useServer_->setEnabled(!isFixed_ && !isBusy && !setup_.isTrying() && !server_->text().trimmed().isEmpty());
  failure_->setText(QString::fromStdString(setup_.failure()));
  failure_->setVisible(!setup_.failure().empty());
  folder_->setVisible(state == FetchState::failed);
  for (QWidget* each :
       {static_cast<QWidget*>(progress_), static_cast<QWidget*>(pause_), static_cast<QWidget*>(cancel_)})
    each->setVisible(isBusy);
  pause_->setEnabled(state == FetchState::fetching || state == FetchState::paused);
  const char* pauseText = state == FetchState::paused ? setuptexts::resume : setuptexts::pause;
  pause_->setText(pauseText);
  pause_->setAccessibleName(accessibleNameOf(pauseText));
  if (isBusy) showProgress();
}

void RecognizerRow::showProgress() {
  const auto& progress = setup_.progress();
  const bool isKnown =
      progress && progress->total.value_or(0) > 0 && setup_.fetchState() != FetchState::unpacking;
  // Without an end the bar only moves.
  progress_->setRange(0, isKnown ? progressSteps : 0);
  progress_->setTextVisible(progress.has_value());
  if (!progress) return;
  progress_->setFormat(describe(*progress));
  if (!isKnown) return;
  const double part = static_cast<double>(progress->received) / static_cast<double>(*progress->total);
  progress_->setValue(static_cast<int>(part * progressSteps));
}

void RecognizerRow::chooseFolder() {
  auto* dialog = new QFileDialog(this, setuptexts::chooseFolder,
                                 QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  dialog->setLabelText(QFileDialog::Accept, setuptexts::choose);
  dialog->setLabelText(QFileDialog::Reject, setuptexts::abandon);
  dialog->setLabelText(QFileDialog::LookIn, setuptexts::lookIn);
  dialog->setLabelText(QFileDialog::FileName, setuptexts::folder);
  QObject::connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& chosen) {
    if (!chosen.isEmpty()) setup_.fetch(model(), chosen.toStdString());
  });
  dialog->open();
}

const models::KnownModel& RecognizerRow::model() const {
  const auto all = models::knownModels();
  return all[static_cast<std::size_t>(std::max(0, models_->currentIndex()))];
}

}  // namespace tavelo
