// The picture of the object and the lines of text over it.
import QtQuick
import QtQuick3D

Item {
    id: root
    required property QtObject scene
    readonly property real distance: scene.eye.minus(scene.center).length()
    readonly property real haze: Math.max(8 * scene.radius + 200, 5 * distance)
    readonly property bool empty: scene.summary === ""
    property bool picture: false  // one to be saved, without texts

    // Never thinner than some pixels. `front`: drawn faintly over what hides them.
    component Rails: Model {
        id: rails
        property vector2d viewport
        property bool front: false
        castsShadows: false
        materials: CustomMaterial {
            property vector2d viewport: rails.viewport
            property bool front: rails.front
            property real strength: front ? 0.2 : 1
            shadingMode: CustomMaterial.Unshaded
            cullMode: Material.NoCulling
            depthDrawMode: front ? Material.NeverDepthDraw : Material.OpaqueOnlyDepthDraw
            sourceBlend: front ? CustomMaterial.One : CustomMaterial.NoBlend
            destinationBlend: front ? CustomMaterial.OneMinusSrcAlpha : CustomMaterial.NoBlend
            vertexShader: "ribbon.vert"
            fragmentShader: "ribbon.frag"
        }
    }

    View3D {
        id: view
        anchors.fill: parent
        camera: camera
        environment: SceneEnvironment {
            antialiasingMode: root.scene.fine ? SceneEnvironment.MSAA : SceneEnvironment.NoAA
            antialiasingQuality: SceneEnvironment.High
            backgroundMode: SceneEnvironment.Color
            clearColor: "#e6edf2"
        }

        PerspectiveCamera {
            id: camera
            position: root.scene.eye
            rotation: root.scene.turn
            fieldOfView: root.scene.fieldOfView
            clipNear: root.scene.clipNear
            clipFar: root.distance + 20 * root.scene.radius + 2000

            PointLight {
                visible: root.scene.lamp
                color: "#fff3e0"
                brightness: 3
                constantFade: 1
                linearFade: 0
                quadraticFade: 25
            }
        }
        DirectionalLight {
            rotation: root.scene.sun
            color: "#fff8ec"
            brightness: 1.1
            ambientColor: "#787e85"
            castsShadow: root.scene.fine
            shadowMapQuality: Light.ShadowMapQualityVeryHigh
            shadowFactor: 96
            shadowBias: 0
        }

        Model {  // the sky
            source: "#Sphere"
            position: root.scene.eye
            scale: Qt.vector3d(1, 1, 1).times(camera.clipNear / 10)
            castsShadows: false
            materials: CustomMaterial {
                shadingMode: CustomMaterial.Unshaded
                cullMode: Material.NoCulling
                vertexShader: "sky.vert"
                fragmentShader: "sky.frag"
            }
        }
        Model {  // the ground
            visible: !root.empty
            source: "#Rectangle"
            position: Qt.vector3d(root.scene.center.x, root.scene.groundHeight - 0.02, root.scene.center.z)
            eulerRotation.x: -90
            scale: Qt.vector3d(1, 1, 1).times(0.4 * root.scene.radius + 20)
            castsShadows: false
            materials: CustomMaterial {
                property real haze: root.haze
                vertexShader: "ground.vert"
                fragmentShader: "ground.frag"
            }
        }
        Model {  // the object
            geometry: root.scene.walls
            materials: CustomMaterial {
                property real haze: root.haze
                sourceBlend: root.scene.transparent ? CustomMaterial.One : CustomMaterial.NoBlend
                destinationBlend: root.scene.transparent ? CustomMaterial.OneMinusSrcAlpha : CustomMaterial.NoBlend
                vertexShader: "wall.vert"
                fragmentShader: "wall.frag"
            }
        }
        Model {  // the backs of its faces
            geometry: root.scene.walls
            visible: root.scene.backFaces
            castsShadows: false
            receivesShadows: false
            materials: PrincipledMaterial {
                lighting: PrincipledMaterial.NoLighting
                baseColor: "red"
                cullMode: Material.FrontFaceCulling
            }
        }
        Rails {
            geometry: root.scene.rails
            viewport: Qt.vector2d(view.width, view.height)
        }
        Rails {  // again, to be seen faintly through the walls
            geometry: root.scene.rails
            viewport: Qt.vector2d(view.width, view.height)
            visible: !root.scene.lamp
            front: true
        }
    }

    Column {  // the scale
        x: 16
        y: root.height - height - 40
        visible: root.scene.scaleBarPixels > 0 && !root.empty
        Text {
            text: root.scene.scaleBarText
            color: "#202020"
            style: Text.Outline
            styleColor: "#c0ffffff"
        }
        Rectangle {
            width: root.scene.scaleBarPixels
            height: 6
            border.color: "#202020"
            Rectangle {
                width: parent.width / 2
                height: parent.height
                color: "#202020"
            }
        }
    }

    Bar {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        visible: !root.picture
        text: (root.empty ? "Drop an object here, or press O" : root.scene.summary) +
              (root.scene.rideText ? "  ·  " + root.scene.rideText : "") +
              (root.scene.notice ? "  ·  " + root.scene.notice : "") +
              "  ·  F1: help"
    }
    Bar {
        anchors { left: parent.left; right: parent.right; top: parent.top }
        visible: text !== ""
        text: root.scene.objectProblem || root.scene.trackProblem
        isWarning: true
    }
    Help {
        anchors.centerIn: parent
        visible: root.scene.help
    }
}
