VARYING vec3 direction;
void MAIN() {
    direction = VERTEX;
    POSITION = MODELVIEWPROJECTION_MATRIX * vec4(VERTEX, 1.0);
    POSITION.z = POSITION.w * 0.999999;
}
