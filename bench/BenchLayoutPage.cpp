#include "BenchLayoutPage.h"

#include <VXSImageExporter.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <output/VXSLayoutRenderer.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QtTest>

namespace {

constexpr int Layout4x4 = 8;
const QSize SceneSize(1000, 800);
// The view keeps its scene this much smaller than itself.
const QSize ViewSize = SceneSize + QSize(4, 4);

} // namespace

CBenchLayoutPage::CBenchLayoutPage(const std::vector<QImage>& sources)
    : m_manager(nullptr)
{
    CVXSLayoutWindow* pWindow = m_manager.getLayoutWindow();
    pWindow->show();
    if (!QTest::qWaitForWindowExposed(pWindow))
        qFatal("the layout window was not shown");
    CVXSLayoutView* pView = m_manager.getLayoutView();
    for (int attempt = 0; attempt < 3 && pView->size() != ViewSize; ++attempt) {
        pWindow->resize(pWindow->size() + ViewSize - pView->size());
        if (!QTest::qWaitFor([pView] { return pView->size() == ViewSize; }, 500))
            qWarning("the view did not reach %dx%d", ViewSize.width(), ViewSize.height());
    }
    if (pView->scene()->sceneRect() != QRectF(QPointF(0, 0), SceneSize))
        qFatal("the page is not %dx%d", SceneSize.width(), SceneSize.height());
    pWindow->layoutStyleCombo()->setCurrentIndex(Layout4x4);
    pWindow->selChngLayoutStyle();
    for (const QImage& source : sources) {
        auto* pItem = new CVXSLayoutItemImage(source);
        m_manager.getScene()->addItem(pItem);
        m_manager.addImageItem(pItem, true);
        m_images.push_back(pItem);
    }
    pWindow->hide();
}

QRect CBenchLayoutPage::cellTarget(int nCell) const
{
    return CVXSLayoutRenderer::imageTarget(m_images[size_t(nCell)], ExportScale);
}

void CBenchLayoutPage::pickPixels()
{
    for (int cell = 0; cell < int(m_images.size()); ++cell) {
        QImage& image = m_images[size_t(cell)]->getImage();
        image = image.scaled(cellTarget(cell).size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    }
}

QImage CBenchLayoutPage::render()
{
    return m_manager.renderLayoutImage(ExportScale);
}

double CBenchLayoutPage::exportPng(QString strPath, QImage* pPage)
{
    QElapsedTimer timer;
    timer.start();
    QImage page = render();
    m_dRenderSeconds = timer.nsecsElapsed() / 1e9;
    CVXSImageExporter exporter;
    if (page.isNull() || exporter.saveImage(page, strPath) != eSTATUS_SUCCESS)
        qFatal("the page could not be exported to %s", qPrintable(strPath));
    const double dSeconds = timer.nsecsElapsed() / 1e9;
    if (pPage)
        *pPage = page;
    return dSeconds;
}

double CBenchLayoutPage::lastRenderSeconds() const
{
    return m_dRenderSeconds;
}
