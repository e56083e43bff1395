#include "LayoutFixture.h"

#include "TestPictures.h"

#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemEllipse.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QtTest>

LayoutFixture::LayoutFixture(QSize viewSize)
    : m_pManager(new CVXSLayoutManager(nullptr))
{
    window()->show();
    if (!QTest::qWaitForWindowExposed(window()))
        qWarning("layout window was not exposed");
    setViewSize(viewSize);
}

LayoutFixture::~LayoutFixture()
{
    delete m_pManager;
}

CVXSLayoutManager* LayoutFixture::manager() const
{
    return m_pManager;
}

CVXSLayoutWindow* LayoutFixture::window() const
{
    return m_pManager->getLayoutWindow();
}

CVXSLayoutView* LayoutFixture::view() const
{
    return m_pManager->getLayoutView();
}

QGraphicsScene* LayoutFixture::scene() const
{
    return m_pManager->getScene();
}

void LayoutFixture::setViewSize(QSize size)
{
    // The view follows the window; grow or shrink the window by what the view lacks. A
    // window still smaller than its contents squeezes the view, so one step may not do.
    for (int attempt = 0; attempt < 3 && view()->size() != size; ++attempt) {
        window()->resize(window()->size() + (size - view()->size()));
        if (QTest::qWaitFor([this, size] { return view()->size() == size; }, 500))
            break;
    }
    QCOMPARE(view()->size(), size);
    QTRY_COMPARE(view()->scene()->sceneRect(), QRectF(0, 0, size.width() - 4, size.height() - 4));
}

void LayoutFixture::chooseStyle(int nStyle)
{
    QComboBox* pCombo = window()->layoutStyleCombo();
    pCombo->setCurrentIndex(nStyle);
    emit pCombo->activated(nStyle);
}

CVXSLayoutItemImage* LayoutFixture::pasteImage(const QImage& image)
{
    auto* pItem = new CVXSLayoutItemImage(image.convertToFormat(QImage::Format_ARGB32), nullptr);
    scene()->addItem(pItem);
    m_pManager->addImageItem(pItem, true);
    return pItem;
}

CVXSLayoutItemImage* LayoutFixture::pasteImage(QSize size, QColor color)
{
    return pasteImage(solidImage(size, color));
}

QGraphicsItem* LayoutFixture::addItem(const QByteArray& kind, const QRectF& rect)
{
    QGraphicsItem* pItem = nullptr;
    if (kind == "image") {
        pItem = pasteImage(rect.size().toSize());
        static_cast<CVXSLayoutItemImage*>(pItem)->setRect(rect);
        return pItem;
    }
    if (kind == "text") {
        auto* pText = new CVXSLayoutItemText(QStringLiteral("Label"));
        pText->setRect(rect);
        pItem = pText;
    } else if (kind == "rectangle") {
        auto* pRectangle = new CVXSLayoutItemRectangle(rect, nullptr);
        pRectangle->setBrush(Qt::white);
        pRectangle->setPen(QPen(Qt::black, 0));
        pItem = pRectangle;
    } else if (kind == "ellipse") {
        pItem = new CVXSLayoutItemEllipse(rect, nullptr);
    } else if (kind == "arrow") {
        auto* pArrow = new CVXSLayoutItemArrow(0, 0, 0, 0);
        pArrow->setStartPoint(int(rect.left()), int(rect.center().y()));
        pArrow->setEndPoint(int(rect.right()), int(rect.center().y()));
        pArrow->setHeadLength(10.0);
        pArrow->setHeadWidthRatio(0.75);
        pArrow->fitRectToPoints();
        pItem = pArrow;
    } else {
        qFatal("unknown item kind %s", kind.constData());
    }
    scene()->addItem(pItem);
    pItem->setZValue(view()->nextZ());
    view()->setTopZ(int(pItem->zValue()));
    return pItem;
}

QList<QByteArray> LayoutFixture::itemKinds()
{
    return {"image", "text", "rectangle", "ellipse", "arrow"};
}

void LayoutFixture::addItemKindRows(const QList<QByteArray>& except)
{
    QTest::addColumn<QByteArray>("kind");
    for (const QByteArray& kind : itemKinds()) {
        if (!except.contains(kind))
            QTest::newRow(kind.constData()) << kind;
    }
}

QAction* LayoutFixture::action(const char* pObjectName) const
{
    return window()->findChild<QAction*>(QString::fromLatin1(pObjectName));
}

void LayoutFixture::triggerAction(const char* pObjectName)
{
    QAction* pAction = action(pObjectName);
    if (!pAction)
        qFatal("no action %s", pObjectName);
    pAction->trigger();
}

void LayoutFixture::chooseArrowTool(int nKind)
{
    static const char* const names[] = {"m_pDrawLineAction", "m_pDrawSingleArrowAction", "m_pDrawDoubleArrowAction"};
    auto* pMenu = window()->findChild<QMenu*>(QStringLiteral("m_pArrowMenu"));
    emit pMenu->triggered(action(names[nKind]));
}

void LayoutFixture::press(QPoint pos, Qt::MouseButton button)
{
    QTest::mousePress(view()->viewport(), button, Qt::NoModifier, pos);
}

void LayoutFixture::move(QPoint pos)
{
    QTest::mouseMove(view()->viewport(), pos);
}

void LayoutFixture::release(QPoint pos, Qt::MouseButton button)
{
    QTest::mouseRelease(view()->viewport(), button, Qt::NoModifier, pos);
}

void LayoutFixture::doubleClick(QPoint pos)
{
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, pos);
    // A double click ends with the button held down; let it go.
    release(pos);
}

void LayoutFixture::drag(QPoint from, QPoint to, int nSteps)
{
    press(from);
    for (int step = 1; step <= nSteps; ++step)
        move(from + (to - from) * step / nSteps);
    release(to);
}

void LayoutFixture::keyClick(Qt::Key key)
{
    view()->setFocus();
    QTest::keyClick(view(), key);
}

QImage LayoutFixture::grabViewport() const
{
    view()->viewport()->repaint();
    return view()->viewport()->grab().toImage();
}

void LayoutFixture::enterAnnotation(const QString& strText)
{
    auto* pEdit = window()->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
    pEdit->selectAll();
    QTest::keyClick(pEdit, Qt::Key_Backspace);
    QTest::keyClicks(pEdit, strText);
    QTest::keyClick(pEdit, Qt::Key_Return);
}
