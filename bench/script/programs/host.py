import time

class Gauge:
    def __init__(self):
        self._level = 0

    @property
    def level(self):
        return self._level

    @level.setter
    def level(self, value):
        self._level = value

gauge = Gauge()

def main():
    for i in range(1000000):
        gauge.level = gauge.level + 1
    return gauge.level

start = time.process_time()
result = main()
print(time.process_time() - start, result)
