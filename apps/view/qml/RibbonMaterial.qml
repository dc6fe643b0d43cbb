// Ribbons that are never thinner than some pixels.
import QtQuick
import QtQuick3D

CustomMaterial {
    property size viewport_: Qt.size(1, 1)
    property vector2d viewport: Qt.vector2d(viewport_.width, viewport_.height)
    property real thinnest: 0.6
    property real strength: 1
    property bool front: false

    shadingMode: CustomMaterial.Unshaded
    cullMode: Material.NoCulling
    depthDrawMode: front ? Material.NeverDepthDraw : Material.OpaqueOnlyDepthDraw
    sourceBlend: front ? CustomMaterial.One : CustomMaterial.NoBlend
    destinationBlend: front ? CustomMaterial.OneMinusSrcAlpha : CustomMaterial.NoBlend
    vertexShader: "ribbon.vert"
    fragmentShader: "ribbon.frag"
}
