#include "app/look/LookStyle.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainterPath>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOption>
#include <QTabBar>

#include "app/look/HeldAlt.h"
#include "app/look/SymbolIcon.h"

namespace quilmora {

namespace {

constexpr int menuItemHeight = 26;
constexpr int menuShortcutGap = 32;
constexpr int menuArrowColumn = 20;

QRegion roundedRegion(const QRect& rect, int radius) {
  QPainterPath path;
  path.addRoundedRect(QRectF(rect), radius, radius);
  return QRegion(path.toFillPolygon().toPolygon());
}

QSize menuItemSize(const QStyleOptionMenuItem& item, const QSize& contents) {
  if (item.menuItemType == QStyleOptionMenuItem::Separator) {
    return {contents.width() + 2 * menus::itemPadding, item.text.isEmpty() ? 9 : 26};
  }
  int width = contents.width() + 2 * menus::itemPadding;
  if (item.menuHasCheckableItems) width += menus::checkColumn;
  if (item.maxIconWidth > 0) width += item.maxIconWidth + metrics::gapSmall;
  if (item.text.contains(QLatin1Char('\t'))) width += menuShortcutGap;
  width += menuArrowColumn;
  return {width, qMax(menuItemHeight, contents.height() + 6)};
}

QString standardSymbol(QStyle::StandardPixmap icon) {
  switch (icon) {
    case QStyle::SP_MessageBoxCritical:
    case QStyle::SP_MessageBoxWarning:
      return QStringLiteral("exclamationmark.triangle");
    case QStyle::SP_MessageBoxInformation:
      return QStringLiteral("info.circle");
    case QStyle::SP_MessageBoxQuestion:
      return QStringLiteral("questionmark.circle");
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirLinkIcon:
      return QStringLiteral("folder");
    case QStyle::SP_FileIcon:
    case QStyle::SP_FileLinkIcon:
      return QStringLiteral("doc");
    case QStyle::SP_DirHomeIcon:
      return QStringLiteral("house");
    case QStyle::SP_DesktopIcon:
      return QStringLiteral("desktopcomputer");
    case QStyle::SP_ComputerIcon:
    case QStyle::SP_DriveHDIcon:
      return QStringLiteral("internaldrive");
    case QStyle::SP_FileDialogNewFolder:
      return QStringLiteral("folder.badge.plus");
    case QStyle::SP_FileDialogToParent:
      return QStringLiteral("arrow.up");
    case QStyle::SP_FileDialogBack:
    case QStyle::SP_ArrowBack:
    case QStyle::SP_ArrowLeft:
      return QStringLiteral("arrow.left");
    case QStyle::SP_ArrowForward:
    case QStyle::SP_ArrowRight:
      return QStringLiteral("arrow.right");
    case QStyle::SP_FileDialogListView:
      return QStringLiteral("list.bullet");
    case QStyle::SP_FileDialogDetailedView:
      return QStringLiteral("list.bullet.indent");
    case QStyle::SP_LineEditClearButton:
      return QStringLiteral("xmark.circle.fill");
    case QStyle::SP_TitleBarCloseButton:
    case QStyle::SP_DockWidgetCloseButton:
      return QStringLiteral("xmark");
    default:
      return {};
  }
}

}  // namespace

LookStyle::LookStyle(std::shared_ptr<const Tokens> tokens)
    : QProxyStyle(QStringLiteral("Fusion")), m_tokens(std::move(tokens)), m_alt(new HeldAlt(this)) {
  setObjectName(QStringLiteral("quilmora"));
}

bool isPrimary(const QStyleOptionButton& option, const QWidget* button) {
  return option.features.testFlag(QStyleOptionButton::DefaultButton) ||
         (button != nullptr && button->property("primary").toBool());
}

bool showsKeyboardFocus(const QStyleOption& option) {
  return option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

bool isHovered(const QStyleOption& option) {
  return option.state.testFlag(QStyle::State_Enabled) && option.state.testFlag(QStyle::State_MouseOver);
}

std::optional<QColor> scrollGround(const QWidget* widget) {
  for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
    if (const auto* area = qobject_cast<const QAbstractScrollArea*>(widget)) {
      const QWidget* viewport = area->viewport();
      return viewport->palette().color(viewport->backgroundRole());
    }
  }
  return std::nullopt;
}

void LookStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  const bool reactsToHover = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                             qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                             qobject_cast<QScrollBar*>(widget) || qobject_cast<QSlider*>(widget) ||
                             qobject_cast<QTabBar*>(widget) || qobject_cast<QMenuBar*>(widget);
  if (reactsToHover) widget->setAttribute(Qt::WA_Hover);
  // The toolkit's own button in a field has no name.
  if (widget->inherits("QLineEditIconButton") && widget->accessibleName().isEmpty())
    widget->setAccessibleName(tr("Clear"));
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_DefaultFrameWidth:
      if (qobject_cast<const QMenu*>(widget)) return 0;
      // So that the corners of scrolling content stay inside the frame's round corners.
      return qobject_cast<const QAbstractScrollArea*>(widget) ? 2 : 1;
    case PM_ButtonMargin:
      return 2 * metrics::gapMedium;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ButtonDefaultIndicator:
      return 0;
    case PM_MenuPanelWidth:
      return 1;
    case PM_MenuHMargin:
      return metrics::gapSmall;
    case PM_MenuVMargin:
      return metrics::gapSmall;
    case PM_MenuBarPanelWidth:
      return 0;
    case PM_MenuBarHMargin:
      return metrics::gap;
    case PM_MenuBarVMargin:
      return 2;
    case PM_MenuBarItemSpacing:
      return 2;
    case PM_SubMenuOverlap:
      return -2;
    case PM_ScrollBarExtent:
      return 10;
    case PM_ScrollBarSliderMin:
      return 32;
    case PM_ScrollView_ScrollBarOverlap:
      return 0;
    case PM_ScrollView_ScrollBarSpacing:
      return 0;
    case PM_SliderThickness:
    case PM_SliderControlThickness:
      return 20;
    case PM_SliderLength:
      return 16;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return 16;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return metrics::gap;
    case PM_ToolTipLabelFrameWidth:
      return 5;
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
    case PM_ButtonIconSize:
    case PM_TabBarIconSize:
      return metrics::rowIcon;
    case PM_MessageBoxIconSize:
      return 32;
    case PM_TabBarTabHSpace:
      return 2 * metrics::gapMedium;
    case PM_TabBarTabVSpace:
      return metrics::gapLarge;
    case PM_TabBarBaseHeight:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
      return 0;
    case PM_SplitterWidth:
      return metrics::gap;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
      return metrics::gapLarge;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return metrics::gap;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
      return 2;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

namespace {

// Whether it is a menu bar that was reached with a key, or one of its menus.
bool isInFocusedMenuBar(const QWidget* widget) {
  const QWidget* bar = widget;
  while (bar != nullptr && qobject_cast<const QMenuBar*>(bar) == nullptr) bar = bar->parentWidget();
  return bar != nullptr && bar->hasFocus();
}

}  // namespace

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
  switch (hint) {
    case SH_UnderlineShortcut:
      return m_alt->isHeld() || isInFocusedMenuBar(widget) ? 1 : 0;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ComboBox_Popup:
    case SH_TabBar_Alignment:
    case SH_MessageBox_CenterButtons:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_Menu_SloppySubMenus:
      return hint == SH_Menu_SloppySubMenus ? 1 : 0;
    case SH_MenuBar_AltKeyNavigation:
    case SH_Menu_SupportsSections:
    case SH_ScrollBar_LeftClickAbsolutePosition:
    case SH_Slider_SnapToValue:
    case SH_MessageBox_TextInteractionFlags:
      return 1;
    case SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case SH_ToolTipLabel_Opacity:
      return 255;
    case SH_ToolTip_WakeUpDelay:
      return 500;
    case SH_RequestSoftwareInputPanel:
      return RSIP_OnMouseClick;
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:
      if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(result); mask != nullptr && option != nullptr) {
        mask->region = roundedRegion(option->rect, metrics::controlRadius);
        return 1;
      }
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
  switch (type) {
    case CT_PushButton: {
      QSize size = contents + QSize(2 * metrics::gapMedium, 0);
      if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        if (!button->text.isEmpty()) size.setWidth(qMax(size.width(), 72));
      }
      return {size.width(), qMax(metrics::controlHeight, contents.height() + metrics::gap)};
    }
    case CT_ComboBox:
      return {contents.width() + 4 * metrics::gap + metrics::gapSmall,
              qMax(metrics::controlHeight, contents.height() + metrics::gap)};
    case CT_LineEdit:
      return {contents.width() + metrics::gap, qMax(metrics::controlHeight, contents.height() + metrics::gap)};
    case CT_SpinBox:
      return {contents.width() + metrics::gapHuge, metrics::controlHeight};
    case CT_MenuItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
        return menuItemSize(*item, contents);
      }
      break;
    case CT_MenuBarItem:
      return contents + QSize(2 * 10, 2 * 5);
    case CT_ItemViewItem: {
      const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
      return {size.width(), qMax(size.height() + metrics::gapSmall, 26)};
    }
    case CT_HeaderSection: {
      const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
      return {size.width() + metrics::gap, qMax(size.height(), 26)};
    }
    case CT_ProgressBar:
      return {contents.width(), 6};
    default:
      break;
  }
  return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  switch (element) {
    case SE_LineEditContents:
      return QProxyStyle::subElementRect(element, option, widget).adjusted(metrics::gapSmall, 0, -metrics::gapSmall, 0);
    case SE_PushButtonFocusRect:
      return option->rect;
    case SE_ProgressBarGroove:
    case SE_ProgressBarContents:
      return option->rect;
    default:
      return QProxyStyle::subElementRect(element, option, widget);
  }
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  const QString symbol = standardSymbol(icon);
  if (symbol.isEmpty()) return QProxyStyle::standardIcon(icon, option, widget);
  const bool isQuiet = icon == SP_LineEditClearButton;
  return symbolIcon(m_tokens, symbol, isQuiet ? &Tokens::secondary : &Tokens::text);
}

}  // namespace quilmora
